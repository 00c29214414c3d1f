#!/usr/bin/env bash
# Packs the package, installs it in a folder outside of the tree as a program's author would, and uses it
# there. Asks no registry. Arguments: the package's folder, the loop files' folder, tsc, node.
set -euo pipefail
package=$1 loops=$2 tsc=$3 node=$4
here=$(cd "$(dirname "$0")" && pwd)
export npm_config_update_notifier=false npm_config_audit=false npm_config_fund=false npm_config_offline=true

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
npm pack --silent --pack-destination "$work" "$package" >/dev/null
mkdir "$work/program"
cd "$work/program"
echo '{ "name": "program", "private": true, "type": "module" }' >package.json
npm install --silent "$work"/looplibrary-*.tgz

cat >main.js <<'END'
import { readFileSync } from 'node:fs';
import { LoopError, LoopLibrary, createPreviewNode } from 'looplibrary';

const loop = await LoopLibrary.load(readFileSync(process.argv[2]));
const [left] = loop.renderSlice(0);
const refusal = await LoopLibrary.load(new Uint8Array(5)).catch((error) => error);
console.log(loop.slices.length, left.some((sample) => sample !== 0), refusal instanceof LoopError,
  typeof createPreviewNode);
END
[ "$("$node" main.js "$loops/drums.lop2")" = "8 true true function" ]

# With none of the types that only a browser's program asks for.
cp "$here/types.mts" .
"$tsc" --strict --noEmit --target ES2022 --lib ES2022 --module Node16 --moduleResolution Node16 types.mts

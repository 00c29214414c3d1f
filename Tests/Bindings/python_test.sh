#!/usr/bin/env bash
# Runs the tests of the Python module on Debian's Python, with numpy where it is installed and
# without it, and installs the module into a scratch folder with no network. Arguments: build folder,
# source folder.
set -euo pipefail

build=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

slices=$("$build/bin/drumloop" "$scratch/drums.wav")
"$build/bin/looptool" make "$scratch/drums.wav" -o "$scratch/drums.lop2" --tempo 120 --bars 2 \
    --slices "$slices" --text "Kicks & hats"
export LOOP_FILE=$scratch/drums.lop2 LOOPLIBRARY_PATH=$build/lib/libLoopLibrary.so
export PYTHONDONTWRITEBYTECODE=1

/usr/bin/python3 "$source/Tests/Bindings/test_looplibrary.py"
LOOP_NO_NUMPY=1 /usr/bin/python3 "$source/Tests/Bindings/test_looplibrary.py"

# The types hold for a program that checks its own strictly.
cat >"$scratch/typed.py" <<'PYTHON'
import looplibrary


def first(path: str) -> float:
    with looplibrary.open(path, progress=lambda percent: percent < 50) as loop:
        preview = loop.preview(tempo=97.5)
        preview.send(120.0)
        return float(loop.slices[0].render()[0][0]) + loop.slices[1:2][0].quarter
PYTHON
MYPYPATH=$source/Bindings/Python mypy --strict --no-error-summary --cache-dir="$scratch/mypy" "$scratch/typed.py"

# The wheel holds all that the module needs.
PYTHONPATH=$source/Bindings/Python /usr/bin/python3 -c "
import sys, build_wheel_offline
print(build_wheel_offline.build_wheel(sys.argv[1]))" "$scratch"
cd "$scratch"
PYTHONPATH=$(echo "$scratch"/*.whl) /usr/bin/python3 -c "
import looplibrary, os
assert '.whl' in looplibrary.__file__
assert looplibrary.open(os.environ['LOOP_FILE']).info.channels == 2"

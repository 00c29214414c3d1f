#!/usr/bin/env bash
# Builds the examples outside the tree against an installed copy of the library, as a person who
# copies them would, by the CMake package and by pkg-config, and runs each. Arguments: build folder, source folder.
set -euo pipefail

build=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/usr" >/dev/null
cp -r "$source/Examples" "$scratch/examples"
cmake -S "$scratch/examples" -B "$scratch/made" -DCMAKE_PREFIX_PATH="$scratch/usr" >/dev/null
cmake --build "$scratch/made" >/dev/null
LD_LIBRARY_PATH=$(dirname "$(find "$scratch/usr" -name libLoopLibrary.so)")
export LD_LIBRARY_PATH
# shellcheck disable=SC2046
cc "$source/Examples/minihost.c" -o "$scratch/minihost" \
    $(PKG_CONFIG_PATH=$LD_LIBRARY_PATH/pkgconfig pkg-config --cflags --libs looplibrary)

"$build/bin/drumloop" "$scratch/drums.wav" >/dev/null
"$build/bin/looptool" make "$scratch/drums.wav" -o "$scratch/drums.lop2" --bars 2 --slices 0,22050
cd "$scratch"

for host in ./made/minihost ./minihost; do
    $host drums.lop2 | grep -q '^120.000 BPM, 2 slices$'
done
./made/dynamic_host drums.lop2 | grep -q '^slice 1 at quarter 1.000$'
./made/preview drums.lop2 preview.f32
test "$(stat -c %s preview.f32)" -eq $((441 * 400 * 8))

# A bar at 120 BPM and a bar at 60: the next pass begins after four half seconds and four whole ones.
./made/slice_player drums.lop2 placed.f32 120 60
/usr/bin/python3 - <<'PYTHON'
import array
placed = array.array("f", open("placed.f32", "rb").read())
assert len(placed) == 441 * 1000 * 2, len(placed)
left = placed[::2]
pass_two = round(48000 * (4 * 0.5 + 4 * 1.0))
assert max(abs(s) for s in left[:1000]) > 0.1
# The first slice again, over what is left of the last one.
assert max(abs(a - b) for a, b in zip(left[:1000], left[pass_two : pass_two + 1000])) < 0.05
PYTHON

echo "a text, not a loop" >text
# Wrong files get an exit code and a word, never a crash.
for host in minihost dynamic_host "preview" "slice_player"; do
    case $host in
    preview) set -- made/preview text out.f32 ;;
    slice_player) set -- made/slice_player text out.f32 120 60 ;;
    *) set -- "made/$host" text ;;
    esac
    code=0
    "$@" 2>words >/dev/null || code=$?
    test "$code" -eq 2
    grep -q . words
done

if [ -x made/player ]; then
    # A sound card that is none, so that the real callback runs everywhere.
    echo 'pcm.!default { type null }
ctl.!default { type null }' >asoundrc
    ALSA_CONFIG_PATH=$PWD/asoundrc ./made/player drums.lop2 1 97.5 140 2>/dev/null |
        grep -q '^playing at 97.500 BPM$'
fi

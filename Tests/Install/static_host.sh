#!/usr/bin/env bash
# A host that is linked as a whole, without a loader, plays loops too. Arguments: compiler, static library,
# source folder, looptool, drumloop, and the emulator of a cross build with its options.
set -euo pipefail

compiler=$1 library=$2 source=$3 looptool=$4 drumloop=$5
shift 5
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

"$@" "$drumloop" "$scratch/drums.wav" >/dev/null
"$@" "$looptool" make "$scratch/drums.wav" -o "$scratch/drums.lop2" --bars 2 --slices 0,22050
# The linker warns of functions that look for parts of the C library at run time.
"$compiler" -x c++ -static -I"$source/Parts/LoopLibrary/Public" "$source/Examples/minihost.c" -x none \
    "$library" -o "$scratch/minihost" 2>"$scratch/log" || { cat "$scratch/log" && exit 1; }
"$@" "$scratch/minihost" "$scratch/drums.lop2" | grep -q '^120.000 BPM, 2 slices$'

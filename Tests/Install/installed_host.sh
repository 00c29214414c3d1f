#!/usr/bin/env bash
# Installs the library into a scratch folder and builds the smallest host against it, by the CMake
# package and by pkg-config, as an integrator would. Arguments: build folder, source folder.
set -euo pipefail

build=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for component in Runtime Development; do
    cmake --install "$build" --prefix "$scratch/usr" --component "$component" >/dev/null
done

mkdir "$scratch/host"
cp "$source/Examples/minihost.c" "$scratch/host/"
cat >"$scratch/host/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(host C)
find_package(LoopLibrary 1.0 REQUIRED)
add_executable(minihost minihost.c)
target_link_libraries(minihost PRIVATE LoopLibrary::LoopLibrary)
CMAKE
cmake -S "$scratch/host" -B "$scratch/host/build" -DCMAKE_PREFIX_PATH="$scratch/usr" >/dev/null
cmake --build "$scratch/host/build" >/dev/null

config=$(dirname "$(find "$scratch/usr" -name looplibrary.pc)")
# shellcheck disable=SC2046
cc "$source/Examples/minihost.c" -o "$scratch/minihost" \
    $(PKG_CONFIG_PATH=$config pkg-config --cflags --libs looplibrary)
export LD_LIBRARY_PATH
LD_LIBRARY_PATH=$(dirname "$(find "$scratch/usr" -name libLoopLibrary.so)")

"$build/bin/drumloop" "$scratch/drums.wav" >/dev/null
"$build/bin/looptool" make "$scratch/drums.wav" -o "$scratch/drums.lop2" --bars 2 --slices 0,22050
for host in "$scratch/host/build/minihost" "$scratch/minihost"; do
    "$host" "$scratch/drums.lop2" | grep -q '^120.000 BPM, 2 slices$'
done

#!/usr/bin/env bash
# Installs the packages into a fresh root and builds hosts against them in each way that a project may
# choose: CMake package, pkg-config, add_subdirectory and FetchContent; shared and static; C99 and C++17;
# and a Windows host from the zip, run under Wine. Arguments: folder of packages, source folder.
set -euo pipefail

packages=$(realpath "$1") source=$(realpath "$2")
here=$(realpath "$(dirname "$0")")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root=$scratch/root
host_c=$source/Examples/minihost.c

# The root begins with what dpkg knows of this machine, so that dependencies are checked: every package
# that ours depend on has to be one that Debian has and that scripts/setup installs.
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/log"
cp /var/lib/dpkg/status "$root/var/lib/dpkg/status"
cp /var/lib/dpkg/info/format "$root/var/lib/dpkg/info/format"
if dpkg-query -W -f='${Package}\n' | grep -qxE 'liblooplibrary.*|looptool'; then
    echo "this machine has the packages installed; the root would not be fresh" >&2
    exit 1
fi
# No scripts of the packages may need a running system: they run beside the root, not in it.
dpkg --root="$root" --force-not-root --force-script-chrootless --no-triggers -i "$packages"/*.deb \
    >"$scratch/dpkg.log" 2>&1 || {
    cat "$scratch/dpkg.log"
    exit 1
}

libdir=$(dirname "$(find "$root/usr/lib" -name libLoopLibrary.a)")
export LD_LIBRARY_PATH=$libdir PKG_CONFIG_PATH=$libdir/pkgconfig
python3 -c '
import struct, sys, wave
with wave.open(sys.argv[1], "wb") as out:
    out.setparams((1, 2, 44100, 0, "NONE", ""))
    out.writeframes(b"".join(struct.pack("<h", (i * 7919) % 20000 - 10000) for i in range(88200)))
' "$scratch/noise.wav"
loop=$scratch/noise.lop2
"$root/usr/bin/looptool" make "$scratch/noise.wav" -o "$loop" --bars 1 --slices 0,22050

"$source/scripts/check-links" "$root/usr/share/doc"
grep -q '"name": "libcairo2"' "$packages"/*.spdx.json # what the programs run with is named

# check WHAT PROGRAM: the host tells the loop's tempo and slices, and the first that tells how its slices
# sound is the measure for the others.
sound=
check() {
    local said heard
    said=$("$2" "$loop" | tr -d '\r')
    heard=$(grep '^sound ' <<<"$said" || true)
    sound=${sound:-$heard}
    if [ "$(head -n 1 <<<"$said")" != "120.000 BPM, 2 slices" ] || [ "${heard:-$sound}" != "$sound" ]; then
        echo "$1: said \"$said\"" >&2
        exit 1
    fi
    echo "$1: right"
}

# needs PROGRAM: whether it loads the shared library.
needs() { objdump -p "$1" | grep -q 'NEEDED.*libLoopLibrary'; }

# What the compiler cache knows of these folders holds for those of another run.
export CCACHE_BASEDIR=$scratch

# outside WAY [SOURCE [OPTION...]]: hosts that come by the library in this way, with each of its targets.
outside() {
    local way=$1 build=$scratch/$1 library
    cmake --no-warn-unused-cli -G Ninja -S "$here/Outside" -B "$build" -DWAY="$way" \
        -DLIBRARIES="Cpp;LoopLibraryStatic" -DSOURCE="${2:-}" -DHOST_C="$host_c" \
        -DCMAKE_PREFIX_PATH="$root/usr" "${@:3}" >/dev/null
    cmake --build "$build" --target hosts >/dev/null
    for library in Cpp LoopLibraryStatic; do
        check "$way, $library, C99" "$build/${library}_c"
        check "$way, $library, C++17" "$build/${library}_cpp"
    done
    needs "$build/Cpp_c"
    ! needs "$build/LoopLibraryStatic_c"
    # Nothing of the library's own gets into the other project: no test, nothing to install.
    test "$(cd "$build" && ctest -N | tail -n 1)" = "Total Tests: 0"
    cmake --install "$build" --prefix "$build/installed" >/dev/null
    test ! -e "$build/installed"
}

outside find_package
# What is not there is refused.
for wanted in 2.0 0.9 1.99 "1.0 COMPONENTS Strings"; do
    if cmake --no-warn-unused-cli -S "$here/Outside" -B "$scratch/refused" -DWAY=find_package \
        -DWANTED="${wanted// /;}" -DCMAKE_PREFIX_PATH="$root/usr" >/dev/null 2>&1; then
        echo "find_package takes $wanted" >&2
        exit 1
    fi
done
cp -r "$source" "$scratch/source"
# Whatever liberties the project allows its own numbers.
outside add_subdirectory "$scratch/source" -DCMAKE_CXX_FLAGS=-ffast-math
outside fetch_content "$packages"/LoopLibrary-*.tar.gz

# shellcheck disable=SC2046
cc -std=c99 "$host_c" -o "$scratch/shared_c" $(pkg-config --cflags --libs looplibrary)
check "pkg-config, shared, C99" "$scratch/shared_c"
# shellcheck disable=SC2046
c++ -std=c++17 "$here/Outside/host.cpp" -o "$scratch/shared_cpp" \
    $(pkg-config --cflags --libs looplibrary)
check "pkg-config, shared, C++17" "$scratch/shared_cpp"
# shellcheck disable=SC2046
cc -std=c99 "$host_c" -o "$scratch/static_c" -Wl,-Bstatic -lLoopLibrary -Wl,-Bdynamic \
    $(pkg-config --static --cflags --libs looplibrary | sed 's/-lLoopLibrary//')
! needs "$scratch/static_c"
check "static archive, C99" "$scratch/static_c"

cat >"$scratch/host.py" <<'PYTHON'
import sys
import looplibrary
with looplibrary.open(sys.argv[1]) as loop:
    print("%.3f BPM, %d slices" % (loop.info.loop_tempo, loop.info.slice_count))
PYTHON
run_python() { PYTHONPATH=$root/usr/lib/python3/dist-packages python3 "$scratch/host.py" "$1"; }
check "Python" run_python
test -f "$(find "$root/usr/lib" -path '*/lv2/loop-player.lv2/manifest.ttl')"

# The examples as they are installed.
cp -r "$root/usr/share/doc/liblooplibrary-dev/examples" "$scratch/examples"
cmake -G Ninja -S "$scratch/examples" -B "$scratch/examples/build" \
    -DCMAKE_PREFIX_PATH="$root/usr" >/dev/null
cmake --build "$scratch/examples/build" >/dev/null
check "installed examples" "$scratch/examples/build/minihost"

# Windows: by the import library, beside the DLL, as a host ships it.
wine=$(command -v wine64 || command -v /usr/lib/wine/wine64 || command -v wine)
server=$(command -v /usr/lib/wine/wineserver64 || command -v wineserver)
export WINEPREFIX=$scratch/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= DISPLAY=
python3 -m zipfile -e "$packages"/*.zip "$scratch/zip"
unpacked=$(dirname "$(dirname "$(find "$scratch/zip" -name LoopLibrary.dll)")")
x86_64-w64-mingw32-gcc-posix -std=c99 "$host_c" -o "$unpacked/bin/host.exe" \
    -I"$unpacked/include" -L"$unpacked/lib" -lLoopLibrary
run_wine() { "$wine" "$unpacked/bin/$program" "Z:${1//\//\\}" 2>/dev/null; }
program=host.exe
check "Windows import library" run_wine
cmake --no-warn-unused-cli -G Ninja -S "$here/Outside" -B "$scratch/windows" -DWAY=find_package \
    -DLIBRARIES=Cpp -DHOST_C="$host_c" -DCMAKE_EXE_LINKER_FLAGS=-static --toolchain "$source/CMake/mingw-w64.cmake" \
    -DLoopLibrary_DIR="$unpacked/lib/cmake/LoopLibrary" >/dev/null
cmake --build "$scratch/windows" --target hosts >/dev/null
cp "$scratch"/windows/*.exe "$unpacked/bin"
for program in Cpp_c.exe Cpp_cpp.exe; do
    check "Windows CMake package, $program" run_wine
done
x86_64-w64-mingw32-gcc-posix "$source/Examples/dynamic_host.c" -o "$unpacked/bin/dynamic.exe" \
    -I"$unpacked/include"
program=dynamic.exe
run_wine "$loop" | tr -d '\r' | grep -qx 'slice 1 at quarter 1.000'
echo "Windows LoadLibrary: right"
"$server" -k || true
"$source/scripts/check-links" "$unpacked"
test -f "$unpacked/README.txt" && test -f "$unpacked/lib/LoopLibrary.def"

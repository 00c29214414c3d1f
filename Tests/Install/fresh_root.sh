#!/usr/bin/env bash
# Makes a root with nothing but Debian's base system, installs the packages there by apt, which brings what
# they depend on, and a compiler, and builds and runs hosts in it. Needs to run as root, a mirror and some
# minutes: scripts/package --check --chroot. Arguments: folder of packages.
set -euo pipefail

packages=$(realpath "$1")
mirror=${DEBIAN_MIRROR:-http://deb.debian.org/debian}
root=$(mktemp -d)
trap 'rm -rf --one-file-system "$root"' EXIT
chmod 755 "$root"
log=$(debootstrap --variant=minbase bookworm "$root" "$mirror" 2>&1) || {
    echo "$log" >&2
    exit 1
}
cp /etc/resolv.conf "$root/etc/resolv.conf"
echo 'Dpkg::Use-Pty "0";' >"$root/etc/apt/apt.conf.d/99no-terminal"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages"

cat >"$root/inside.sh" <<'INSIDE'
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C
apt-get update -qq
# Each by itself first: what it depends on has to come with it.
apt-get install -y -qq --no-install-recommends /packages/looptool_*.deb >/dev/null
python3 --version 2>/dev/null && echo "the base system has Python: the next check says less"
apt-get install -y -qq --no-install-recommends /packages/liblooplibrary1_*.deb \
    /packages/python3-looplibrary_*.deb /packages/loop-player-lv2_*.deb >/dev/null
cd /tmp
python3 -c '
import wave
with wave.open("noise.wav", "wb") as out:
    out.setparams((1, 2, 44100, 0, "NONE", ""))
    out.writeframes(b"".join(((i * 7919) % 20000 - 10000).to_bytes(2, "little", signed=True) for i in range(88200)))'
looptool make noise.wav -o noise.lop2 --bars 1 --slices 0,22050
python3 -c '
import looplibrary
with looplibrary.open("noise.lop2") as loop:
    assert (loop.info.loop_tempo, len(loop.slices)) == (120.0, 2)
    assert len(loop.slices[1].render()[0]) > 22050'
echo "Python: right"
apt-get install -y -qq --no-install-recommends /packages/liblooplibrary-dev_*.deb \
    gcc g++ libc6-dev cmake make pkg-config >/dev/null
examples=/usr/share/doc/liblooplibrary-dev/examples
cc -std=c99 $examples/minihost.c -o host $(pkg-config --cflags --libs looplibrary)
test "$(./host noise.lop2 | head -n 1)" = "120.000 BPM, 2 slices"
echo "pkg-config: right"
cmake -S $examples -B made >/dev/null
cmake --build made >/dev/null
test "$(made/minihost noise.lop2 | head -n 1)" = "120.000 BPM, 2 slices"
made/dynamic_host noise.lop2 | grep -qx 'slice 1 at quarter 1.000'
echo "CMake package, dlopen: right"
own="looptool loop-player-lv2 python3-looplibrary liblooplibrary-dev liblooplibrary1"
dpkg -L $own | while read -r path; do test -d "$path" || echo "$path"; done >files
test -d /usr/lib/python3/dist-packages/looplibrary/__pycache__
apt-get purge -y -qq $own >/dev/null
left=$(while read -r path; do test ! -e "$path" || echo "$path"; done <files
    find /usr /etc /var/lib/dpkg/info -iname '*looplibrary*' -o -name 'looptool*' -o -name 'loop-player*')
test -z "$left" || { echo "left behind: $left" && exit 1; }
echo "purged without a trace"
INSIDE
chroot "$root" bash /inside.sh

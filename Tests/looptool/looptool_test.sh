#!/usr/bin/env bash
# The tool as a person uses it. Arguments: the tool, the maker of the demo's drum loop, and what starts
# the two if they are Windows programs.
set -uo pipefail

looptool=$1 drumloop=$2 launcher=("${@:3}")
tool() {
    "${launcher[@]}" "$looptool" "$@"
    local code=$?
    [ "$code" -le 2 ] || echo "exit code $code: $*" >&2
    return "$code"
}
# Arguments beyond ASCII reach Windows programs in a UTF-8 locale only.
export LC_ALL=C.UTF-8
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
# expect CODE PATTERN command...: the exit code, and a text in what was said on either stream.
expect() {
    local code=$1 pattern=$2 said
    shift 2
    said=$("$@" 2>&1 </dev/null)
    [ $? -eq "$code" ] || fail "exit code of: $* ($said)"
    grep -q -- "$pattern" <<<"$said" || fail "no \"$pattern\" from: $* ($said)"
}
# field KEY: a value of info --json of the file drums.lop2.
field() { tool info "$1" --json | python3 -c "import json, sys; print(json.load(sys.stdin)['$2'])"; }

slices=$("${launcher[@]}" "$drumloop" drums.wav | tr -d '\r')
tool make drums.wav -o drums.lop2 --tempo 120 --bars 2 --slices "$slices" --text "some one" ||
    fail "make"
[ "$(field drums.lop2 slice_count)" = 16 ] || fail "slice count"
[ "$(field drums.lop2 bit_depth)" = 24 ] || fail "depth"
[ "$(field drums.lop2 loop_tempo)" = 120.0 ] || fail "tempo"
expect 0 "some one" tool info drums.lop2
expect 0 '"position_ppq": 7680' tool slices drums.lop2 --json

# What was packed comes back to the bit, from WAV and from FLAC, in both depths.
tool decode drums.lop2 -o decoded.wav
cmp drums.wav decoded.wav || fail "the decoded audio differs"
tool make drums.wav -o short.lop2 --bars 2 --bits 16 && tool decode short.lop2 -o short.wav
tool make short.wav -o again.lop2 --bars 2 && tool decode again.lop2 -o again.wav
cmp short.wav again.wav || fail "16 bits differ"
if [ ${#launcher[@]} -eq 0 ] && command -v flac >/dev/null; then
    flac --silent drums.wav -o drums.flac && tool make drums.flac -o flac.lop2 --bars 2 &&
        tool decode flac.lop2 -o flac.wav
    cmp drums.wav flac.wav || fail "audio from FLAC differs"
fi

tool render drums.lop2 -o out --rate 48000 && [ "$(ls out | wc -l)" -eq 16 ] || fail "render"
tool render drums.lop2 -o one --slice 3 && [ -s one/drums_slice_003.wav ] || fail "one slice"
tool preview drums.lop2 --tempo 97.5 --seconds 2 -o preview.wav || fail "preview"
tool preview drums.lop2 --tempo 97.5 --seconds 2 -o - | cmp - preview.wav || fail "to stdout"

# The older kinds: mono, 16 bits.
tool make short.wav -o stereo.tsl --kind tsl --bars 2 2>/dev/null && fail "a stereo .tsl"
python3 - <<'PYTHON'
import wave
with wave.open("short.wav") as source, wave.open("mono.wav", "wb") as target:
    target.setparams((1, 2, source.getframerate(), 0, "NONE", ""))
    frames = source.readframes(source.getnframes())
    target.writeframes(b"".join(frames[i : i + 2] for i in range(0, len(frames), 4)))
PYTHON
for kind in tsl lop; do
    tool make mono.wav -o "mono.$kind" --kind "$kind" --bars 2 --slices "$slices" ||
        fail "make $kind"
    [ "$(field "mono.$kind" slice_count)" = 16 ] || fail "slices of $kind"
    tool decode "mono.$kind" -o "mono.$kind.wav" && cmp mono.wav "mono.$kind.wav" ||
        fail "audio of $kind"
    tool preview "mono.$kind" --tempo 80 --seconds 1 -o "preview.$kind.wav" || fail "preview $kind"
done

# Any file name; what is wrong is told with the name of the file.
names=('żółw Ω 鼓.lop2')
[ ${#launcher[@]} -gt 0 ] || names+=($'b\xFFd: ?name.lop2')
for name in "${names[@]}"; do
    cp drums.lop2 "$name"
    expect 0 "Slices:         16" tool info "$name"
    tool render "$name" -o "in $name" --slice 0 && [ -s "in $name/${name%.lop2}_slice_000.wav" ] ||
        fail "render from and to: $name"
done
expect 2 "nothing.lop2: no such file" tool info nothing.lop2
expect 2 "drums.wav: not a loop file" tool info drums.wav
: >empty
expect 2 "empty: is empty" tool info empty
expect 2 "drums.lop2: has 16 slices; there is no slice 16" tool render drums.lop2 -o x --slice 16
expect 2 "no/where.wav: cannot write" tool preview drums.lop2 -o no/where.wav
expect 1 "length is needed" tool make drums.wav -o x.lop2
expect 1 "lies behind the audio" tool make drums.wav -o x.lop2 --bars 1 --slices 999999999
expect 1 "tempo" tool preview drums.lop2 -o x.wav --tempo 10
[ ! -e x.lop2 ] || fail "a failed make left a file"

[ "$failures" -eq 0 ] && echo "all held"
exit $((failures > 0))

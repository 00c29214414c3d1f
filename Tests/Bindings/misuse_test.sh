#!/usr/bin/env bash
# Misuse of the C++ header that has to fail to compile. Arguments: compiler, source folder.
set -euo pipefail

compiler=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# A function around each row of standard input, the row in the line of its number.
functions() {
    local row=0 statement
    while IFS= read -r statement; do
        row=$((row + 1))
        echo "void Row$row(Loop& loop, Library& library, std::vector<float>& samples,"
        echo '          const std::vector<float>& constant, std::vector<double>& doubles) {'
        printf '#line %d "row"\n%s\n' "$row" "$statement"
        echo '(void)loop, (void)library, (void)samples, (void)constant, (void)doubles; }'
    done
}

# compiles OPTION...: whether the rows of standard input do.
compiles() {
    {
        printf '#include "LoopLibrary.hpp"\n#include "SliceScheduler.hpp"\nusing namespace LoopLibrary;\n'
        functions
    } >"$scratch/rows.cpp"
    LC_ALL=C "$compiler" -std=c++17 -Wall -Werror -fsyntax-only "$@" -I"$source/Bindings/Cpp" \
        -I"$source/Parts/LoopLibrary/Public" "$scratch/rows.cpp" >"$scratch/log" 2>&1
}

cat >"$scratch/rows" <<'ROWS'
Loop copy = loop;|Loop moved = std::move(loop);
Library copy = library;|Library moved = std::move(library);
loop.SetPreviewTempo(120000);|loop.SetPreviewTempo(Bpm(120));
loop.SetPreviewTempo(97.5);|loop.SetPreviewTempo(Bpm::FromThousandths(97500));
loop.SetOutputSampleRate(44100.0);|loop.SetOutputSampleRate(44100);
loop.RenderPreview(samples);|(void)loop.RenderPreview(samples);
(void)loop.RenderPreview(constant);|(void)loop.RenderPreview(samples, nullptr);
(void)loop.RenderPreview(doubles);|(void)loop.RenderPreview({samples.data(), 5});
(void)loop.RenderPreview(std::vector<float>(5));|float array[5]; (void)loop.RenderPreview(array);
Loop::Open(samples);|Loop::Open(std::string("bytes"));
Loop::Open(std::string(), [](const char*) {});|Loop::Open(std::string(), [](int) {});
Loop::Open(std::string(), [](int) { return "on"; });|Loop::Open(std::string(), [](int) { return true; });
int code = loop.RenderPreview(samples); (void)code;|Result code = loop.RenderPreview(samples); (void)code;
Result result; loop.GetInfo(&result);|Result result; (void)loop.GetInfo(result);
ROWS

# Each with the warnings that other projects have on.
warnings=(-Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wdouble-promotion)
for options in -std=c++17 -std=c++20 "-fno-exceptions -fno-rtti"; do
    # shellcheck disable=SC2086
    if ! cut -d'|' -f2 "$scratch/rows" | compiles $options "${warnings[@]}"; then
        echo "does not compile with $options, and should:"
        cat "$scratch/log"
        exit 1
    fi
done
if cut -d'|' -f1 "$scratch/rows" | compiles; then
    echo "compiles, and should not: all of it"
    exit 1
fi
row=0
while IFS='|' read -r wrong _; do
    row=$((row + 1))
    if ! grep -Eq "row:$row:.*(error|required from|requested here)" "$scratch/log"; then
        echo "compiles, and should not: $wrong"
        exit 1
    fi
done <"$scratch/rows"

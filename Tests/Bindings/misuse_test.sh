#!/usr/bin/env bash
# Misuse of the C++ header that has to fail to compile. Arguments: compiler, source folder.
set -euo pipefail

compiler=$1 source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

compiles() {
    {
        echo '#include "LoopLibrary.hpp"'
        echo 'using namespace LoopLibrary;'
        echo 'void Use(Loop& loop, Library& library, std::vector<float>& samples,'
        echo '         const std::vector<float>& constant, std::vector<double>& doubles) {'
        echo "    $1"
        echo '    (void)loop, (void)library, (void)samples, (void)constant, (void)doubles; }'
    } >"$scratch/row.cpp"
    "$compiler" -std=c++17 -Wall -Werror -fsyntax-only -I"$source/Bindings/Cpp" \
        -I"$source/Parts/LoopLibrary/Public" "$scratch/row.cpp" >"$scratch/log" 2>&1
}

while IFS='|' read -r wrong right; do
    if ! compiles "$right"; then
        echo "does not compile, and should: $right"
        cat "$scratch/log"
        exit 1
    fi
    if compiles "$wrong"; then
        echo "compiles, and should not: $wrong"
        exit 1
    fi
done <<'ROWS'
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

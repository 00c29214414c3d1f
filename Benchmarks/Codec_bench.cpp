// The decoders and the compressor over the same signals in one run. Items are samples, so that mono
// and stereo compare. Argument: the signal.
#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopLibrary/Codec/Reference/CPlainTWIPDecompressor.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/SyntheticLoop.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

using NSLoopWriter::Plane;

struct SSignal {
    std::string fName;
    Plane fLeft;
    Plane fRight; // empty: mono
    std::vector<uint8_t> fStream;

    int32_t GetFrames() const { return static_cast<int32_t>(fLeft.size()); }
    size_t GetSamples() const { return fLeft.size() + fRight.size(); }
};

SSignal MakeSignal(std::string name, Plane left, Plane right) {
    std::vector<uint8_t> stream = NSLoopWriter::CompressTWIP(left, right);
    return {std::move(name), std::move(left), std::move(right), std::move(stream)};
}

SSignal MakeDrums(std::string name, int32_t bitDepth, bool stereo) {
    NSLoopWriter::SDrumLoop loop =
        NSLoopWriter::MakeDrumLoop({.fBitDepth = bitDepth, .fStereo = stereo, .fBeats = 16});
    return MakeSignal(std::move(name), std::move(loop.fLeft), std::move(loop.fRight));
}

constexpr int64_t kLastSignal = 5;

// Made when the first of them is measured.
const SSignal& GetSignal(const benchmark::State& state) {
    constexpr size_t kFrames = 300000;
    static const std::vector<SSignal> signals = {
        MakeDrums("drums/16/mono", 16, false),
        MakeDrums("drums/24/stereo", 24, true),
        MakeSignal("noise/16/mono", NSLoopWriter::MakeNoise(kFrames, 16, 1), {}),
        MakeSignal("noise/24/stereo", NSLoopWriter::MakeNoise(kFrames, 24, 1),
                   NSLoopWriter::MakeNoise(kFrames, 24, 2)),
        MakeSignal("sine/16/mono", NSLoopWriter::MakeSine(kFrames, 16, 3000), {}),
        MakeSignal("silence/16/mono", Plane(kFrames), {}),
    };
    return signals.at(static_cast<size_t>(state.range(0)));
}

void Report(benchmark::State& state, const SSignal& signal) {
    state.SetLabel(signal.fName);
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(signal.GetSamples()));
    state.counters["bits/sample"] =
        static_cast<double>(signal.fStream.size()) * 8.0 / static_cast<double>(signal.GetSamples());
}

NSPorter::CMemoryMedia OpenStream(const SSignal& signal) {
    return {static_cast<int64_t>(signal.fStream.size()), signal.fStream.data()};
}

void DecodeFast(benchmark::State& state) {
    const SSignal& signal = GetSignal(state);
    std::vector<int32_t> samples(signal.GetSamples());
    for ([[maybe_unused]] auto pass : state) {
        NSPorter::CMemoryMedia media = OpenStream(signal);
        NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
        if (signal.fRight.empty()) {
            decoder.DecompressMono(signal.GetFrames(), nullptr, samples.data());
        } else {
            decoder.DecompressStereo(signal.GetFrames(), nullptr, samples.data());
        }
        benchmark::ClobberMemory();
    }
    Report(state, signal);
}

void DecodePlain(benchmark::State& state) {
    const SSignal& signal = GetSignal(state);
    std::vector<int32_t> samples(signal.GetSamples());
    for ([[maybe_unused]] auto pass : state) {
        NSPorter::CMemoryMedia media = OpenStream(signal);
        NSLOPDLL::CPlainTWIPDecompressor decoder(&media, signal.fRight.empty() ? 1 : 2);
        decoder.Decompress(signal.GetFrames(), nullptr, samples.data());
        benchmark::ClobberMemory();
    }
    Report(state, signal);
}

void Compress(benchmark::State& state) {
    const SSignal& signal = GetSignal(state);
    for ([[maybe_unused]] auto pass : state) {
        benchmark::DoNotOptimize(NSLoopWriter::CompressTWIP(signal.fLeft, signal.fRight));
    }
    Report(state, signal);
}

BENCHMARK(DecodeFast)->DenseRange(0, kLastSignal);
BENCHMARK(DecodePlain)->DenseRange(0, kLastSignal);
BENCHMARK(Compress)->DenseRange(0, kLastSignal);

} // namespace

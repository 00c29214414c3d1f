// The hot parts of the render floor: the interpolator's and the equalizer's forms, bulk fetches,
// and whole blocks. Times are per block of 64 frames.

#include "LoopLibrary/Render/Equalizer/CEqualizerEffect.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"
#include "LoopLibrary/Render/Sampler/CTesselSampler.h"
#include "LoopLibrary/Render/Sampler/VoiceFetch.h"

#include <benchmark/benchmark.h>

#include <array>
#include <memory>
#include <vector>

namespace {

using namespace NSLOPDLL;

constexpr int32_t kSampleFrames = 441000;

std::unique_ptr<CABCWaveSample> MakeSample(bool stereo, uint32_t depth) {
    auto sample = CreateWaveSample(44100, kSampleFrames, stereo, depth);
    uint32_t state = 1;
    for (int32_t frame = 0; frame < kSampleFrames; ++frame) {
        for (int32_t channel = 1; channel <= (stereo ? 2 : 1); ++channel) {
            state = state * 1664525U + 1013904223U;
            sample->Set24BitSample(frame, static_cast<int32_t>(state) >> 8, channel);
        }
    }
    return sample;
}

struct CBlock {
    std::array<float, kBlockFrames> fLeft{};
    std::array<float, kBlockFrames> fRight{};
    CBlockBuffers Buffers() { return {fLeft.data(), fRight.data()}; }
};

// Argument: mono or stereo.
void Interpolate(benchmark::State& state, const char* name, uint32_t step) {
    if (!ForceRenderForm(name)) {
        state.SkipWithError("not on this processor");
        return;
    }
    const auto form = GetRenderForm().fInterpolate;
    ForceRenderForm("");
    std::vector<float> left(kFetchCapacity, 0.25F);
    std::vector<float> right(kFetchCapacity, -0.5F);
    const std::array<float, kBlockFrames> gains{};
    CBlock block;
    const float* second = state.range(0) == 1 ? left.data() : right.data();
    while (state.KeepRunning()) {
        form({left.data(), second, 77, step, gains.data(), block.Buffers()});
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK_CAPTURE(Interpolate, Plain, "plain", 17777U)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(Interpolate, Sse2, "sse2", 17777U)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(Interpolate, Avx2, "avx2", 17777U)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(Interpolate, Sse2UnitStep, "sse2", kUnitStep)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(Interpolate, Avx2UnitStep, "avx2", kUnitStep)->Arg(1)->Arg(2);

CEqualizerEffect MakeEqualizer() {
    CEqualizerEffect equalizer(44100);
    equalizer.SetEnabled(true);
    equalizer.SetRunFlag(true);
    equalizer.SetBand1Gain(6000);
    equalizer.SetBand2Gain(-6000);
    return equalizer;
}

void EqualizerTwoChannels(benchmark::State& state) {
    CEqualizerEffect equalizer = MakeEqualizer();
    CBlock block;
    equalizer.Process(block.Buffers());
    CEqualizerState left;
    CEqualizerState right;
    while (state.KeepRunning()) {
        FilterChannel(equalizer.GetCoefficients(), left, block.fLeft.data());
        FilterChannel(equalizer.GetCoefficients(), right, block.fRight.data());
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK(EqualizerTwoChannels);

void EqualizerStereoLanes(benchmark::State& state) {
    CEqualizerEffect equalizer = MakeEqualizer();
    CBlock block;
    equalizer.Process(block.Buffers());
    CEqualizerState left;
    CEqualizerState right;
    while (state.KeepRunning()) {
        FilterStereoLanes(equalizer.GetCoefficients(), left, right, block.Buffers());
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK(EqualizerStereoLanes);

// With the coefficients of the block.
void EqualizerProcess(benchmark::State& state) {
    CEqualizerEffect equalizer = MakeEqualizer();
    CBlock block;
    while (state.KeepRunning()) {
        equalizer.Process(block.Buffers());
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK(EqualizerProcess);

// Argument: bit depth.
void FetchSlice(benchmark::State& state) {
    const auto sample = MakeSample(true, static_cast<uint32_t>(state.range(0)));
    std::vector<float> left(kFetchCapacity);
    std::vector<float> right(kFetchCapacity);
    SamplerVoice voice;
    voice.fRangeEnd = kSampleFrames;
    while (state.KeepRunning()) {
        voice.fPosition = voice.fPosition > kSampleFrames - 200 ? 0 : voice.fPosition;
        FetchSliceVoice(voice, *sample, kBlockFrames, left.data(), right.data());
        benchmark::DoNotOptimize(left.data());
    }
}
BENCHMARK(FetchSlice)->Arg(16)->Arg(24);

// Whether each voice has gone on from where it started in the block that was just rendered.
bool EightVoicesSound(const CTesselSampler& sampler) {
    for (size_t index = 0; index < 8; ++index) {
        if (sampler.GetVoice(index).fPosition < kBlockFrames / 2) {
            return false;
        }
    }
    return true;
}

// Eight voices, seven of them just released, and the equalizer. Released voices die within two
// blocks, so that the voices are started anew for each one. Without the shaper they sound from
// their first frame on; a voice that is released in its attack would be silent.
void BlockOfEightVoices(benchmark::State& state) {
    const auto sample = MakeSample(state.range(0) == 2, 24);
    CTesselSampler sampler(sample.get(), 48000);
    sampler.SetShaperOn(false);
    CEqualizerEffect equalizer = MakeEqualizer();
    CBlock block;
    while (state.KeepRunning()) {
        for (int32_t voice = 0; voice < 8; ++voice) {
            sampler.StartRange({voice, kSampleFrames, voice, kSampleFrames, 1.0F});
        }
        sampler.RenderBlock(block.Buffers());
        equalizer.Process(block.Buffers());
        benchmark::DoNotOptimize(block);
    }
    if (!EightVoicesSound(sampler)) {
        state.SkipWithError("a voice was silent");
    }
}
BENCHMARK(BlockOfEightVoices)->Arg(1)->Arg(2);

void BlockOfOneVoice(benchmark::State& state) {
    const auto sample = MakeSample(state.range(0) == 2, 24);
    CTesselSampler sampler(sample.get(), 48000);
    CBlock block;
    while (state.KeepRunning()) {
        if (sampler.IsCurrentVoiceIdle() || sampler.IsCurrentVoiceInTail()) {
            sampler.StartRange({0, kSampleFrames, 0, kSampleFrames, 1.0F});
        }
        sampler.RenderBlock(block.Buffers());
        benchmark::DoNotOptimize(block);
    }
}
BENCHMARK(BlockOfOneVoice)->Arg(1)->Arg(2);

} // namespace

// The insides of one build of the library. LoopBench has those of this build in it, and opens those
// of an earlier one as a module that scripts/bench builds from this file and that build's objects.
// That is why headers are named without the folders in which they stand, which have changed.

#include "Benchmarks/Voices/EightVoices.h"

#include "CABCWaveSample.h"
#include "CEqualizerEffect.h"
#include "CTesselSampler.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <map>
#include <memory>
#include <tuple>

namespace LoopBench {

namespace {

using namespace NSLOPDLL;

constexpr int32_t kSampleFrames = 441000;

double ThreadSecondsNow() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

std::unique_ptr<CABCWaveSample> MakeNoiseSample(bool stereo) {
    auto sample = CreateWaveSample(44100, kSampleFrames, stereo, 16);
    uint32_t noise = 1;
    for (int32_t channel = 1; channel <= (stereo ? 2 : 1); ++channel) {
        for (int32_t frame = 0; frame < kSampleFrames; ++frame) {
            noise = noise * 1664525U + 1013904223U;
            sample->Set24BitSample(frame, static_cast<int32_t>(noise) >> 9, channel);
        }
    }
    return sample;
}

const CABCWaveSample& GetSample(bool stereo) {
    static const auto mono = MakeNoiseSample(false);
    static const auto both = MakeNoiseSample(true);
    return stereo ? *both : *mono;
}

CSlicePlayRange RangeFor(EPlace place, int32_t voice) {
    const int32_t start = voice * 999;
    switch (place) {
    case EPlace::kTail:
        return {9990, 90000, 5000, 9991, 0.9F};
    case EPlace::kOneFrameTail:
        return {1000, 45000, 1000, 1001, 0.9F};
    default:
        return {start, kSampleFrames, start, kSampleFrames, 1.0F};
    }
}

// The voices are started anew for each block, since a started voice releases the others, and
// released ones die within two blocks. What starting takes is taken off.
class CEightVoices {
public:
    explicit CEightVoices(const SEightVoices& what)
        : fSampler(&GetSample(what.fStereo != 0), what.fRate), fPlace(what.fPlace),
          fWithEqualizer(what.fEqualizer != 0) {
        fSampler.SetShaperOn(fPlace != EPlace::kBody);
        fSampler.SetShaperAttack(0);
        fSampler.SetShaperStretch(100);
        fEqualizer.SetEnabled(true);
        fEqualizer.SetRunFlag(true);
        fEqualizer.SetBand1Gain(6000);
        fEqualizer.SetBand2Gain(-6000);
    }

    double Run() {
        const double start = ThreadSecondsNow();
        for (int32_t block = 0; block < kMeasuredBlocks; ++block) {
            StartVoices();
        }
        const double middle = ThreadSecondsNow();
        for (int32_t block = 0; block < kMeasuredBlocks; ++block) {
            StartVoices();
            fSampler.RenderBlock({fLeft.data(), fRight.data()});
            if (fWithEqualizer) {
                fEqualizer.Process({fLeft.data(), fRight.data()});
            }
        }
        const double end = ThreadSecondsNow();
        return AllSound() ? end - middle - (middle - start) : -1.0;
    }

private:
    void StartVoices() {
        fSampler.ResetVoices();
        for (int32_t voice = 0; voice < kMeasuredVoices; ++voice) {
            fSampler.StartRange(RangeFor(fPlace, voice));
        }
    }

    // Each voice has a gain and has gone on, or into its tail.
    bool AllSound() const {
        for (size_t i = 0; i < kMeasuredVoices; ++i) {
            const SamplerVoice& voice = fSampler.GetVoice(i);
            const bool goesOn = fPlace == EPlace::kBody ? voice.fPosition >= 32 : voice.fInTail;
            if (voice.fGain == 0.0F || !goesOn) {
                return false;
            }
        }
        return true;
    }

    CTesselSampler fSampler;
    CEqualizerEffect fEqualizer{44100};
    EPlace fPlace;
    bool fWithEqualizer;
    alignas(64) std::array<float, kBlockFrames> fLeft{};
    alignas(64) std::array<float, kBlockFrames> fRight{};
};

} // namespace

extern "C" __attribute__((visibility("default"))) double
LoopBenchRunEightVoices(const SEightVoices* what) {
    static std::map<std::tuple<int32_t, int32_t, EPlace, int32_t>, std::unique_ptr<CEightVoices>>
        kept;
    auto& voices = kept[{what->fStereo, what->fRate, what->fPlace, what->fEqualizer}];
    if (voices == nullptr) {
        voices = std::make_unique<CEightVoices>(*what);
    }
    return voices->Run();
}

} // namespace LoopBench

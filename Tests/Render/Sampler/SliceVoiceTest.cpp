#include "LoopLibrary/Render/Forms/PlainForms.h"
#include "LoopLibrary/Render/Sampler/CTesselSampler.h"
#include "LoopLibrary/Render/Sampler/VoiceFetch.h"
#include "Tests/Render/RenderTestTools.h"

#include <algorithm>

namespace NSLOPDLL {
namespace {

// A slice voice written out frame by frame, with no shared code but the tables: what the sampler's
// voices are compared with, to the bit.
class CPlainSliceVoice {
public:
    CPlainSliceVoice(const CABCWaveSample& sample, int32_t outputRate,
                     const CSamplerSettings& settings, const CSlicePlayRange& range)
        : fSample(sample), fTables(outputRate), fSettings(settings),
          fRange(range), fCursor{range.fStart, 0, false, 1.0F, 1.0F},
          fRising(settings.fShaperOn && settings.fShaperAttack > 0),
          fCompressorRising(settings.fCompressorAttack > 0), fEnvelope(fRising ? 0.0F : 1.0F),
          fCompressor(fCompressorRising ? 0.0F : 1.0F) {
        const int32_t percent = settings.fShaperOn ? settings.fShaperStretch + 1 : 1;
        const int32_t length =
            (range.fTailEnd - range.fStart) * percent / 100 + range.fEnd - range.fTailEnd;
        fFadeStep = length >= 2 ? 1.0F / static_cast<float>(length) : 1.0F;
        if (range.fTailEnd != range.fTailStart) {
            fLevelStep =
                (1.0F - range.fTailGain) / static_cast<float>(range.fTailEnd - range.fTailStart);
        }
        fGain = Target();
    }

    // Adds a block; false once the voice has died.
    bool Render(CTestBlock& block) {
        if (!fRising && fCursor.fFade * fEnvelope < 6.25e-5F) {
            return false;
        }
        const float* rates = fTables.GetAttackRates();
        const float* factors = fTables.GetDecayFactors();
        fCompressor = fCompressorRising ? fCompressor + rates[fSettings.fCompressorAttack]
                                        : fCompressor * factors[fSettings.fCompressorRelease];
        fCompressorRising = fCompressorRising && fCompressor <= 1.0F;
        fCompressor = std::min(fCompressor, 1.0F);
        float attackRamp = fRising ? rates[fSettings.fShaperAttack] / 64.0F : 0.0F;
        fEnvelope = fRising
                        ? fEnvelope + rates[fSettings.fShaperAttack]
                        : fEnvelope * factors[fSettings.fShaperOn ? fSettings.fShaperDecay : 1023];
        fRising = fRising && fEnvelope <= 1.0F;
        fEnvelope = std::min(fEnvelope, 1.0F);
        const float target = Target();
        float ramp = (target - fGain) / 64.0F;
        attackRamp = attackRamp <= ramp ? 0.0F : attackRamp;

        const float ratio = static_cast<float>(fSample.GetSampleRate()) /
                            static_cast<float>(fTables.GetSampleRate());
        const float exact =
            static_cast<float>(CDSPTables::GetPitchTable()[fSettings.fTranspose + 12900]) * ratio;
        const uint32_t step = exact > 1048576.0F ? 1048576U : static_cast<uint32_t>(exact);
        const size_t count = (step * 64 + fPhase) >> 14;
        for (size_t k = 0; k < count; ++k) {
            Fetch(fCursor, k, false);
        }
        CCursor ahead = fCursor;
        for (size_t k = count; k < count + 16; ++k) {
            Fetch(ahead, k, true);
        }
        for (size_t frame = 0; frame < 64; ++frame) {
            block.fLeft[frame] += Interpolate(fLeft) * fGain;
            block.fRight[frame] += Interpolate(fRight) * fGain;
            fPhase += step;
            if (attackRamp > 0.0F && attackRamp > ramp) {
                fGain += attackRamp;
                if (fGain >= target) {
                    fGain = target;
                    attackRamp = ramp = 0.0F;
                }
            } else {
                fGain += ramp;
            }
        }
        fPhase &= 0x3fff;
        return true;
    }

private:
    struct CCursor {
        int32_t fPosition;
        uint32_t fDirection;
        bool fInTail;
        float fFade;
        float fLevel;
    };

    float Target() const {
        const float threshold = static_cast<float>(fSettings.fCompressorThreshold) / 256.0F + 0.01F;
        const float ratio = static_cast<float>(fSettings.fCompressorRatio) / 127.0F;
        const float level = fCompressor > threshold ? fCompressor : threshold;
        float gain = 1.0F;
        if (fSettings.fCompressorOn) {
            gain = 1.0F / (((level * 2.0F) * ratio + (1.0F - ratio)) + 0.001F);
        }
        return ((gain * fEnvelope) * (fSettings.fGain * 0.001F)) * 0.8333333F;
    }

    void Fetch(CCursor& c, size_t k, bool lookAhead) {
        const int32_t right = fSample.IsStereo() ? 2 : 1;
        fLeft[k] = fSample.GetFloatSample(c.fPosition, 1) * c.fFade * c.fLevel;
        fRight[k] = fSample.GetFloatSample(c.fPosition, right) * c.fFade * c.fLevel;
        if (c.fInTail) {
            c.fFade = c.fFade - fFadeStep < 1e-6F ? 1e-6F : c.fFade - fFadeStep;
            c.fLevel = c.fDirection == 1 ? c.fLevel + fLevelStep : c.fLevel - fLevelStep;
        }
        if (c.fDirection == 2) {
            c.fDirection = --c.fPosition <= fRange.fTailStart ? 1 : 2;
        } else if (c.fPosition + 1 < fRange.fTailEnd) {
            ++c.fPosition;
        } else {
            c.fInTail = c.fInTail || !lookAhead;
            c.fDirection = c.fPosition > fRange.fTailStart ? 2 : 1;
        }
    }

    float Interpolate(const float* fetch) const {
        const float* taps = CDSPTables::GetInterpolationTable() + ((fPhase >> 6) & 255);
        float sum = taps[size_t{5} * 256] * fetch[fPhase >> 14];
        for (size_t tap = 1; tap < 6; ++tap) {
            sum = sum + taps[(5 - tap) * 256] * fetch[(fPhase >> 14) + tap];
        }
        return sum;
    }

    const CABCWaveSample& fSample;
    const CDSPTables fTables;
    const CSamplerSettings fSettings;
    const CSlicePlayRange fRange;
    CCursor fCursor;
    bool fRising;
    bool fCompressorRising;
    float fEnvelope;
    float fCompressor;
    float fFadeStep;
    float fLevelStep = 0.0F;
    float fGain;
    uint32_t fPhase = 0;
    float fLeft[4112];
    float fRight[4112];
};

void Apply(const CSamplerSettings& settings, CTesselSampler& sampler) {
    sampler.SetTranspose(settings.fTranspose);
    sampler.SetGain(static_cast<int16_t>(settings.fGain));
    sampler.SetShaperOn(settings.fShaperOn);
    sampler.SetShaperAttack(settings.fShaperAttack);
    sampler.SetShaperDecay(settings.fShaperDecay);
    sampler.SetShaperStretch(settings.fShaperStretch);
    sampler.SetCompressorOn(settings.fCompressorOn);
    sampler.SetCompressorThreshold(settings.fCompressorThreshold);
    sampler.SetCompressorRatio(settings.fCompressorRatio);
    sampler.SetCompressorAttack(settings.fCompressorAttack);
    sampler.SetCompressorRelease(settings.fCompressorRelease);
}

// From the first block to the voice's death, with a look at the length at each block.
TEST(SliceVoice, RendersLikeThePlainVoice) {
    // Cents, gain; shaper: on, attack, decay, stretch; compressor: on, threshold, ratio, attack,
    // release.
    const CSamplerSettings plain;
    const CSamplerSettings off{.fShaperOn = false};
    const CSamplerSettings shaped{317, 1000.0F, true, 250, 300, 100};
    const CSamplerSettings quickest{0, 1000.0F, true, 1, 300, 100};
    const CSamplerSettings compressed{0, 7943.0F, true, 21, 1023, 40, true, 20, 127, 60, 134};
    const CSamplerSettings low{-2400, 1000.0F, true, 0, 1023, 40, true, 0, 39, 0};
    const CSlicePlayRange tail{100, 2900, 1500, 2500, 1.7F};
    const struct {
        const char* fName;
        uint32_t fRate;
        int32_t fOutputRate;
        bool fStereo;
        CSlicePlayRange fRange;
        CSamplerSettings fSettings;
    } cases[] = {
        {"defaults", 44100, 44100, true, tail, plain},
        {"mono", 44100, 44100, false, tail, plain},
        {"all off", 44100, 48000, true, tail, off},
        {"shaped", 44100, 44100, true, tail, shaped},
        {"quickest attack", 44100, 44100, true, tail, quickest},
        {"fade of two frames", 44100, 44100, true, {10, 260, 210, 260, 0.5F}, off},
        {"compressed", 48000, 44100, true, tail, compressed},
        {"low", 22050, 96000, true, tail, low},
        {"no tail region", 44100, 22050, true, {10, 310, 10, 310, 1.0F}, plain},
        {"a frame of tail", 44100, 44100, true, {10, 310, 309, 310, 0.5F}, shaped},
        {"a mono frame of tail", 44100, 48000, false, {10, 310, 309, 310, 0.5F}, shaped},
        {"two frames of tail", 44100, 44100, true, {10, 310, 308, 310, 0.5F}, shaped},
        {"tail of no length", 44100, 44100, true, {0, 100, 50, 50, 3.0F}, plain},
        {"nothing", 44100, 44100, true, {3000, 3000, 3000, 3000, 1.0F}, plain},
        {"limit of the step", 1000000, 11025, true, tail, plain},
        {"under the limit", 1000000, 23000, false, tail, shaped},
    };
    for (const SRenderForm& form : GetRenderForms()) {
        ForceRenderForm(form.fName);
        for (const auto& c : cases) {
            const uint32_t depth = c.fStereo ? 24 : 16;
            const auto sample = MakeNoiseSample(c.fRate, 3000, c.fStereo, depth);
            CTesselSampler sampler(sample.get(), c.fOutputRate);
            Apply(c.fSettings, sampler);
            CPlainSliceVoice expected(*sample, c.fOutputRate, c.fSettings, c.fRange);
            sampler.StartRange(c.fRange);
            bool alive = true;
            for (int32_t i = 0; alive && i < 5000; ++i) {
                CTestBlock block;
                CTestBlock expectedBlock;
                block.fLeft.fill(9.0F);
                sampler.RenderBlock(block.Buffers());
                alive = expected.Render(expectedBlock);
                ASSERT_EQ(block, expectedBlock) << form.fName << c.fName << ", block " << i;
                ASSERT_EQ(sampler.IsCurrentVoiceIdle(), !alive) << c.fName << ", block " << i;
                ASSERT_GE(sampler.GetRenderLength(c.fRange), 1);
            }
            EXPECT_FALSE(alive) << c.fName;
        }
    }
    ForceRenderForm("");
}

CTestBlock Interpolate(const SRenderForm& form, const std::vector<float>& left,
                       const std::vector<float>& right, uint32_t phase, uint32_t step) {
    CTestNoise noise(step);
    CTestBlock block;
    float gains[64];
    for (float& gain : gains) {
        gain = noise.NextFloat();
    }
    block.fLeft.fill(0.3F);
    form.fInterpolate({left.data(), right.data(), phase, step, gains, block.Buffers()});
    return block;
}

// The arrays end two floats behind the last tap, so that a sanitizer sees a form that reads
// further.
TEST(Interpolator, AllFormsGiveTheSameBits) {
    CTestNoise noise(5);
    std::vector<uint32_t> steps = {0, 1, 16383, 16384, 16385, 8192, kLargestStep};
    while (steps.size() < 200) {
        steps.push_back(noise.Next() % (steps.size() < 100 ? 40000U : kLargestStep));
    }
    for (const uint32_t step : steps) {
        const uint32_t phase = step == kLargestStep ? 16383 : noise.Next() & 0x3fff;
        std::vector<float> left(((phase + 63 * step) >> 14) + 8);
        std::vector<float> right(left.size());
        std::generate(left.begin(), left.end(), [&] { return noise.NextFloat(); });
        std::generate(right.begin(), right.end(), [&] { return noise.NextFloat(); });
        for (const SRenderForm& form : GetRenderForms()) {
            for (const auto* side : {&right, &left}) { // stereo, and mono
                ASSERT_EQ(Interpolate(form, left, *side, phase, step),
                          Interpolate(GetRenderForms().front(), left, *side, phase, step))
                    << form.fName << step;
            }
        }
    }
}

} // namespace
} // namespace NSLOPDLL

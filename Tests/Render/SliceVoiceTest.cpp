#include "LoopLibrary/Render/CTesselSampler.h"
#include "LoopLibrary/Render/VoiceEnvelopes.h"
#include "Tests/Render/CPlainSliceVoice.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <cmath>

namespace NSLOPDLL {
namespace {

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

struct CVoiceCase {
    const char* fName;
    uint32_t fRate;
    int32_t fOutputRate;
    bool fStereo;
    CSlicePlayRange fRange;
    CSamplerSettings fSettings;
};

// From the first block to the voice's death, with a look at the length at each block.
TEST(SliceVoice, RendersLikeThePlainVoice) {
    CSamplerSettings plain;
    CSamplerSettings off;
    off.fShaperOn = false;
    CSamplerSettings shaped;
    shaped.fTranspose = 317;
    shaped.fShaperAttack = 250;
    shaped.fShaperDecay = 300;
    shaped.fShaperStretch = 100;
    CSamplerSettings compressed;
    compressed.fGain = 7943.0F;
    compressed.fCompressorOn = true;
    compressed.fCompressorThreshold = 20;
    compressed.fCompressorRatio = 127;
    compressed.fCompressorAttack = 60;
    compressed.fCompressorRelease = 134;
    CSamplerSettings low;
    low.fTranspose = -2400;
    low.fCompressorAttack = 0;
    low.fCompressorOn = true;
    low.fCompressorThreshold = 0;
    low.fShaperAttack = 0;

    const CSlicePlayRange tail{100, 2900, 1500, 2500, 1.7F};
    const CVoiceCase cases[] = {
        {"defaults", 44100, 44100, true, tail, plain},
        {"mono", 44100, 44100, false, tail, plain},
        {"all off", 44100, 48000, true, tail, off},
        {"shaped", 44100, 44100, true, tail, shaped},
        {"compressed", 48000, 44100, true, tail, compressed},
        {"low", 22050, 96000, true, tail, low},
        {"no tail region", 44100, 22050, true, {10, 310, 10, 310, 1.0F}, plain},
        {"one frame of tail", 44100, 44100, true, {10, 310, 309, 310, 0.5F}, shaped},
        {"tail of no length", 44100, 44100, true, {0, 100, 50, 50, 3.0F}, plain},
        {"nothing at the very end", 44100, 44100, true, {3000, 3000, 3000, 3000, 1.0F}, plain},
        {"a step at its limit", 1000000, 11025, true, tail, plain},
        {"many source frames", 96000, 11025, false, tail, compressed},
    };
    for (const CVoiceCase& c : cases) {
        for (const uint32_t depth : {16U, 24U}) {
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
                ASSERT_EQ(block, expectedBlock) << c.fName << ", block " << i;
                ASSERT_EQ(sampler.IsCurrentVoiceIdle(), !alive) << c.fName << ", block " << i;
                ASSERT_GE(sampler.GetRenderLength(c.fRange), 1);
            }
            EXPECT_FALSE(alive) << c.fName;
        }
    }
}

// At unity pitch a voice without envelopes is the source itself, two frames late and at the
// headroom.
TEST(SliceVoice, ReadsTwoFramesBehindTheFirstFetch) {
    const auto sample = CreateWaveSample(44100, 1000, false, 24);
    CTestNoise noise(3);
    for (int32_t i = 0; i < 1000; i += 10) {
        sample->Set24BitSample(i, noise.Within(1000000, 8000000), 1);
    }
    CTesselSampler sampler(sample.get(), 44100);
    sampler.SetShaperOn(false);
    sampler.StartRange({20, 990, 20, 990, 1.0F});
    CTestBlock block;
    sampler.RenderBlock(block.Buffers());
    for (size_t i = 0; i < 64; ++i) {
        const float source = sample->GetFloatSample(static_cast<int32_t>(i) + 22, 1);
        EXPECT_NEAR(block.fLeft[i], source * 0.8333333F, 2e-3F) << i;
    }
    EXPECT_EQ(block.fLeft, block.fRight);
    EXPECT_EQ(sampler.GetCurrentVoicePosition(), 84);
    EXPECT_EQ(sampler.GetVoice(1).fPhase, 0U);
}

TEST(SliceVoice, TailGoesToAndFroUnderTheFade) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    CTesselSampler sampler(sample.get(), 44100);
    // The fade lasts (100 - 0) * 41 / 100 + 0 = 41 frames.
    sampler.StartRange({0, 100, 60, 100, 0.5F});
    CTestBlock block;
    sampler.RenderBlock(block.Buffers());
    EXPECT_FALSE(sampler.IsCurrentVoiceInTail());
    EXPECT_EQ(sampler.GetCurrentVoicePosition(), 64);
    sampler.RenderBlock(block.Buffers());
    // Frame 99 is fetched at the 36th and again at the 37th of these 64, so that the position is
    // then 98, and 27 frames later 71.
    const SamplerVoice& voice = sampler.GetVoice(1);
    EXPECT_TRUE(sampler.IsCurrentVoiceInTail());
    EXPECT_EQ(voice.fPosition, 71);
    EXPECT_EQ(voice.fDirection, kVoiceDirection_Backward);
    EXPECT_NEAR(voice.fFadeGain, 1.0F - 28.0F / 41.0F, 1e-5F);
    EXPECT_NEAR(voice.fTailLevel, 1.0F - 28.0F * 0.5F / 40.0F, 1e-5F);
    sampler.RenderBlock(block.Buffers());
    EXPECT_EQ(voice.fFadeGain, 1e-6F);
    EXPECT_FALSE(sampler.IsCurrentVoiceIdle());
    sampler.RenderBlock(block.Buffers());
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    EXPECT_EQ(block, CTestBlock());
}

TEST(VoiceEnvelopes, TargetGainFollowsThresholdAndRatio) {
    SamplerVoice voice;
    voice.fEnvelope = 1.0F;
    CSamplerSettings settings;
    const struct {
        bool fOn;
        int16_t fThreshold;
        int16_t fRatio;
        float fCompressor;
        double fGain;
    } cases[] = {{false, 0, 127, 1.0F, 1.0},
                 {true, 0, 0, 1.0F, 1.0 / 1.001},
                 {true, 0, 127, 1.0F, 1.0 / 2.001},
                 {true, 0, 127, 0.25F, 1.0 / 0.501},
                 {true, 64, 127, 0.25F, 1.0 / (2.0 * 0.26 + 0.001)}};
    for (const auto& c : cases) {
        settings.fCompressorOn = c.fOn;
        settings.fCompressorThreshold = c.fThreshold;
        settings.fCompressorRatio = c.fRatio;
        voice.fCompressorEnvelope = c.fCompressor;
        EXPECT_NEAR(TargetGain(voice, settings), c.fGain * 0.8333333, 2e-7);
    }
}

TEST(VoiceEnvelopes, BlockStepHoldsAttacksAndReleases) {
    const CDSPTables tables(44100);
    CSamplerSettings settings;
    settings.fShaperAttack = 21; // 1.5 blocks' worth in one: over within the first
    SamplerVoice voice;
    const CSlicePlayRange range{0, 1000, 0, 1000, 1.0F};
    StartEnvelopes(voice, range, settings);
    EXPECT_EQ(voice.fState, kVoiceState_Attack);
    EXPECT_EQ(TargetGain(voice, settings), 0.0F);
    CGainMove move = StepEnvelopes(voice, settings, tables);
    EXPECT_EQ(voice.fState, kVoiceState_Held);
    EXPECT_EQ(voice.fEnvelope, 1.0F);
    EXPECT_EQ(move.fTarget, kVoiceHeadroom);
    EXPECT_GT(move.fAttackRamp, move.fRamp);
    float gains[kBlockFrames];
    EXPECT_EQ(FillGains(0.0F, move, gains), kVoiceHeadroom); // reaches and keeps the target
    EXPECT_EQ(gains[0], 0.0F);
    EXPECT_EQ(gains[1], move.fAttackRamp);
    EXPECT_LT(gains[35], kVoiceHeadroom); // 0.8333 / 0.02354 is 35.4
    EXPECT_EQ(gains[36], kVoiceHeadroom);
    for (int32_t i = 0; i < 100; ++i) {
        StepEnvelopes(voice, settings, tables);
    }
    EXPECT_EQ(voice.fEnvelope, 1.0F); // a decay of 1023 is none

    voice.fState = kVoiceState_Release;
    voice.fGain = 0.64F;
    move = StepEnvelopes(voice, settings, tables);
    EXPECT_LT(voice.fEnvelope, 2e-9F);
    EXPECT_NEAR(FillGains(voice.fGain, move, gains), 0.0F, 1e-6F);
    EXPECT_NEAR(gains[32], 0.32F, 1e-6F);

    // Settings beyond the tables, which no loader lets through, act as the tables' ends.
    EXPECT_EQ(EnvelopeTableValue(tables.GetTimes(), -5), tables.GetTimes()[0]);
    EXPECT_EQ(EnvelopeTableValue(tables.GetTimes(), 32767), tables.GetTimes()[1023]);
}

} // namespace
} // namespace NSLOPDLL

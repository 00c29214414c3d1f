#include "LoopLibrary/Render/CTesselSampler.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace NSLOPDLL {
namespace {

constexpr CSlicePlayRange kRange{0, 1000, 0, 1000, 1.0F};

int32_t SoundingVoices(const CTesselSampler& sampler, uint32_t state) {
    int32_t count = 0;
    for (size_t i = 0; i < 8; ++i) {
        count += sampler.GetVoice(i).fState == state ? 1 : 0;
    }
    return count;
}

TEST(Sampler, VoicesRotateAndRelease) {
    const auto sample = MakeNoiseSample(44100, 60000, true, 16);
    CTesselSampler sampler(sample.get(), 44100);
    CTestBlock block;
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    block.fRight.fill(1.0F);
    sampler.RenderBlock(block.Buffers());
    EXPECT_EQ(block, CTestBlock());
    for (int32_t i = 0; i < 20; ++i) {
        sampler.StartRange({i, 60000, i, 60000, 1.0F});
        EXPECT_EQ(sampler.GetCurrentVoicePosition(), i);
        EXPECT_EQ(SoundingVoices(sampler, kVoiceState_Release), std::min(i, 7));
        EXPECT_EQ(SoundingVoices(sampler, kVoiceState_Attack), 1);
    }
    for (int32_t i = 0; i < 3; ++i) {
        sampler.RenderBlock(block.Buffers());
    }
    EXPECT_EQ(SoundingVoices(sampler, kVoiceState_Off), 7);
    EXPECT_EQ(SoundingVoices(sampler, kVoiceState_Held), 1);
    sampler.ReleaseAllVoices();
    EXPECT_FALSE(sampler.IsCurrentVoiceIdle());
    sampler.ResetVoices();
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    sampler.RenderBlock(block.Buffers());
    EXPECT_EQ(block, CTestBlock());
    EXPECT_EQ(sampler.GetVoice(4).fPosition, 0);
    sampler.StartRange(kRange);
    EXPECT_EQ(sampler.GetVoice(5).fState, kVoiceState_Attack); // the place in the rotation stands
}

// At unity pitch a plain voice is the source, two frames late and at the headroom, to within what
// the kernel's side taps add at phase 0.
void ExpectSource(CTesselSampler& sampler, const CABCWaveSample& sample,
                  const std::vector<int32_t>& frames) {
    CTestBlock block;
    for (size_t i = 0; i < frames.size(); ++i) {
        if (i % 64 == 0) {
            sampler.RenderBlock(block.Buffers());
        }
        const float source =
            frames[i] < 0 ? 0.0F : sample.GetFloatSample(frames[i], 2) * 0.8333333F;
        ASSERT_NEAR(block.fRight[i % 64], source, 4e-3F) << i;
    }
}

// `count` frames as a voice reads them that goes from `from` to `end` and then round from `start`,
// or falls silent when `start` is negative; the two frames that it skips are left out.
std::vector<int32_t> Walk(int32_t from, int32_t start, int32_t end, int32_t count) {
    std::vector<int32_t> frames;
    for (int32_t frame = from; count + 2 > 0; --count) {
        frames.push_back(frame);
        frame = frame < 0 || frame + 1 < end ? frame + (frame >= 0 ? 1 : 0) : start;
    }
    frames.erase(frames.begin(), frames.begin() + 2);
    return frames;
}

TEST(Sampler, PlainVoicesPlayOnceOrRound) {
    const auto sample = MakeNoiseSample(44100, 1000, true, 24);
    sample->SetLoop(2, 100, 300);
    CTesselSampler sampler(sample.get(), 44100);
    sampler.SetTranspose(1200); // slice voices only

    sampler.StartFreeRange(10, 200);
    ExpectSource(sampler, *sample, Walk(10, -1, 200, 256));
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());

    sampler.StartFreeRun(50);
    ExpectSource(sampler, *sample, Walk(50, 100, 300, 640));
    EXPECT_FALSE(sampler.IsCurrentVoiceIdle());
    // 640 frames from 50 end at 100 + (640 - 250) % 200 = 290.
    EXPECT_EQ(sampler.GetCurrentVoicePosition(), 290);
    sampler.EndFreeLoops();
    CTestBlock block;
    sampler.RenderBlock(block.Buffers());
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    EXPECT_NEAR(block.fLeft[7], sample->GetFloatSample(299, 1) * 0.8333333F, 4e-3F);
    EXPECT_NEAR(block.fLeft[9], 0.0F, 4e-3F);
    EXPECT_NE(block.fLeft[9], 0.0F); // side taps still reach back into the sound
    EXPECT_EQ(block.fLeft[11], 0.0F);

    sampler.StartFreeRun(300); // not before the loop's end: round the whole sample
    ExpectSource(sampler, *sample, Walk(300, 0, 1000, 960));
    sampler.ReleaseAllVoices();
    sampler.RenderBlock(block.Buffers());
    EXPECT_NEAR(block.fLeft[63], 0.0F, 0.02F); // one block's ramp
    sampler.RenderBlock(block.Buffers());
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    EXPECT_EQ(block, CTestBlock());
}

TEST(Sampler, RangesWithoutFramesStayInsideTheSample) {
    const auto sample = MakeNoiseSample(44100, 500, true, 24);
    sample->SetLoop(2, 500, 500);
    CTesselSampler sampler(sample.get(), 44100);
    CTestBlock block;
    for (int32_t i = 0; i < 4; ++i) {
        if (i == 0) {
            sampler.StartFreeRange(500, 500);
        } else if (i == 1) {
            sampler.StartFreeRun(499);
        } else {
            sampler.StartRange({500, 500, 500, 500, 1.0F});
        }
        for (int32_t n = 0; n < 20; ++n) {
            sampler.RenderBlock(block.Buffers());
            for (const float value : block.fLeft) {
                ASSERT_TRUE(std::isfinite(value));
            }
        }
    }
}

// Worked by hand: 1000 frames of body, a fade of 1000 * 41 / 100 = 410, and the step.
TEST(Sampler, RenderLengthFollowsBodyFadeAndDecay) {
    const struct {
        const char* fName;
        uint32_t fRate;
        int32_t fOutputRate;
        bool fShaper;
        int16_t fTranspose;
        int16_t fDecay;
        CSlicePlayRange fRange;
        int32_t fLength;
    } cases[] = {
        {"plain", 44100, 44100, true, 0, 1023, kRange, 1410},
        {"shaper off", 44100, 44100, false, 0, 400, kRange, 1010},
        {"octave up", 44100, 44100, true, 1200, 1023, kRange, 705},
        {"double rate", 44100, 88200, true, 0, 1023, kRange, 2820},
        {"behind the tail", 44100, 44100, false, 0, 1023, {0, 1000, 200, 800, 1.0F}, 1008},
        {"nothing", 44100, 44100, true, 0, 1023, {7, 7, 7, 7, 1.0F}, 1},
        {"less than a frame", 1000000, 11025, true, 0, 1023, {7, 7, 7, 7, 1.0F}, 1},
        // Index 58 takes 4 * 1.1 ^ 5.664 - 3.9 = 2.963 ms to a quarter; silence is 6.9828 quarters
        // away, 912.5 frames, and the attack of 21 takes 42.5.
        {"decay", 44100, 44100, true, 0, 58, kRange, 954},
        {"no step", 10, 1000000, true, 0, 1023, kRange, 0x7FFFFFFF},
        {"no step, with a decay", 10, 1000000, true, 0, 58, kRange, 21654},
        {"a very small step",
         400,
         1000000,
         true,
         0,
         1023,
         {0, 3000000, 0, 3000000, 1.0F},
         0x7FFFFFFF},
        {"longest range",
         44100,
         44100,
         false,
         0,
         1023,
         {0, 0x7FFFFFFF, 0, 0x7FFFFFFF, 1.0F},
         0x7FFFFFFF},
    };
    for (const auto& c : cases) {
        const auto sample = CreateWaveSample(c.fRate, 10, false, 16);
        CTesselSampler sampler(sample.get(), c.fOutputRate);
        sampler.SetShaperOn(c.fShaper);
        sampler.SetTranspose(c.fTranspose);
        sampler.SetShaperDecay(c.fDecay);
        EXPECT_NEAR(sampler.GetRenderLength(c.fRange), c.fLength, c.fLength == 21654 ? 1 : 0)
            << c.fName;
    }
}

TEST(Sampler, HoldsOneReferenceOnTheTablesOfItsRate) {
    CDSPTablesCache& cache = CDSPTablesCache::Instance();
    const auto sample = CreateWaveSample(44100, 10, false, 16);
    {
        CTesselSampler sampler(sample.get(), 5);
        EXPECT_EQ(sampler.GetOutputRate(), 11025);
        sampler.SetOutputRate(2000000);
        EXPECT_EQ(sampler.GetOutputRate(), 1000000);
        EXPECT_EQ(cache.GetReferenceCount(11025), 0);
        sampler.SetOutputRate(1000001);
        EXPECT_EQ(cache.GetReferenceCount(1000000), 1);
        sampler.SetGain(500);
        sampler.StartRange(kRange);

        const CTesselSampler copy(sampler);
        EXPECT_EQ(cache.GetReferenceCount(1000000), 2);
        EXPECT_EQ(copy.GetSettings().fGain, 500.0F);
        EXPECT_TRUE(copy.IsCurrentVoiceIdle());

        EXPECT_EQ(sampler.AdoptTables(*cache.Acquire(33333)), 1000000);
        cache.Release(1000000);
        EXPECT_EQ(sampler.GetOutputRate(), 33333);
        EXPECT_EQ(cache.GetReferenceCount(1000000), 1);
    }
    EXPECT_EQ(cache.GetReferenceCount(33333), 0);
    EXPECT_EQ(cache.GetReferenceCount(1000000), 0);
}

} // namespace
} // namespace NSLOPDLL

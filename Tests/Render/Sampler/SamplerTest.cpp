#include "LoopLibrary/Render/Sampler/CTesselSampler.h"
#include "Tests/Render/RenderTestTools.h"

#include <algorithm>

namespace NSLOPDLL {
namespace {

constexpr CSlicePlayRange kRange{0, 1000, 0, 1000, 1.0F};

TEST(Sampler, VoicesRotateAndRelease) {
    const auto sample = MakeNoiseSample(44100, 60000, true, 16);
    CTesselSampler sampler(sample.get(), 44100);
    const auto count = [&sampler](uint32_t state) {
        int32_t voices = 0;
        for (size_t i = 0; i < 8; ++i) {
            voices += sampler.GetVoice(i).fState == state ? 1 : 0;
        }
        return voices;
    };
    CTestBlock block;
    for (int32_t i = 0; i < 20; ++i) {
        sampler.StartRange({i, 60000, i, 60000, 1.0F});
        EXPECT_EQ(count(kVoiceState_Release), std::min(i, 7));
    }
    for (int32_t i = 0; i < 3; ++i) {
        sampler.RenderBlock(block.Buffers());
    }
    EXPECT_EQ(count(kVoiceState_Off), 7);
    sampler.ResetVoices();
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());
    sampler.StartRange(kRange); // the place in the rotation stands
    EXPECT_EQ(sampler.GetVoice(5).fState, kVoiceState_Attack);
}

// At unity pitch a plain voice is the source, two frames late and at the headroom, to within what
// the kernel's side taps add at phase 0. A frame of -1 is silence.
void ExpectFrames(CTesselSampler& sampler, const CABCWaveSample& sample,
                  const std::vector<int32_t>& frames) {
    CTestBlock block;
    for (size_t i = 0; i < frames.size(); ++i) {
        if (i % 64 == 0) {
            sampler.RenderBlock(block.Buffers());
        }
        const float source = frames[i] < 0 ? 0.0F : sample.GetFloatSample(frames[i], 2);
        ASSERT_NEAR(block.fRight[i % 64], source * 0.8333333F, 4e-3F) << i;
    }
}

// The frames that a voice goes over from `from` on, up to `end` and then round from `start`, or
// silent when that is negative, without the two that it skips.
std::vector<int32_t> Walk(int32_t from, int32_t start, int32_t end, int32_t count) {
    std::vector<int32_t> frames;
    for (int32_t frame = from; count + 2 > 0; --count) {
        frames.push_back(frame);
        frame = frame + 1 < end && frame >= 0 ? frame + 1 : start;
    }
    return {frames.begin() + 2, frames.end()};
}

TEST(Sampler, PlainVoicesPlayOnceOrRound) {
    const auto sample = MakeNoiseSample(44100, 1000, true, 24);
    sample->SetLoop(2, 100, 300);
    CTesselSampler sampler(sample.get(), 44100);
    sampler.SetTranspose(1200); // slice voices only

    sampler.StartFreeRange(10, 200);
    ExpectFrames(sampler, *sample, Walk(10, -1, 200, 256));
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());

    sampler.StartFreeRun(50);
    ExpectFrames(sampler, *sample, Walk(50, 100, 300, 640));
    sampler.EndFreeLoops();
    ExpectFrames(sampler, *sample, Walk(290, -1, 300, 64)); // 100 + (640 - 250) % 200
    EXPECT_TRUE(sampler.IsCurrentVoiceIdle());

    sampler.StartFreeRun(300); // not before the loop's end: round the whole sample
    ExpectFrames(sampler, *sample, Walk(300, 0, 1000, 960));
    sampler.ReleaseAllVoices();
    CTestBlock block;
    sampler.RenderBlock(block.Buffers());
    EXPECT_NEAR(block.fLeft[63], 0.0F, 0.02F); // a ramp of one block
    sampler.RenderBlock(block.Buffers());
    EXPECT_EQ(block, CTestBlock());
}

// Worked by hand: 1000 frames of body, a fade of 1000 * 41 / 100 = 410, and the step. Index 58
// takes 4 * 1.1 ^ 5.664 - 3.9 = 2.963 ms to a quarter; silence is 6.983 quarters or 912.5 frames
// away, and the attack of 21 takes 42.5.
TEST(Sampler, RenderLengthFollowsBodyFadeAndDecay) {
    const auto length = [](uint32_t rate, int32_t outputRate, CSlicePlayRange range,
                           CSamplerSettings settings = {}) {
        const auto sample = CreateWaveSample(rate, 10, false, 16);
        CTesselSampler sampler(sample.get(), 96000);
        sampler.SetOutputRate(outputRate);
        sampler.SetShaperOn(settings.fShaperOn);
        sampler.SetTranspose(settings.fTranspose);
        sampler.SetShaperDecay(settings.fShaperDecay);
        return sampler.GetRenderLength(range);
    };
    EXPECT_EQ(length(44100, 44100, kRange), 1410);
    EXPECT_EQ(length(44100, 88200, kRange), 2820);
    EXPECT_EQ(length(44100, 44100, kRange, {.fTranspose = 1200}), 705);
    EXPECT_EQ(length(44100, 44100, kRange, {.fShaperDecay = 58}), 954);
    const CSamplerSettings off{.fShaperOn = false, .fShaperDecay = 58};
    EXPECT_EQ(length(44100, 44100, kRange, off), 1010);
    EXPECT_EQ(length(44100, 44100, {0, 1000, 200, 800, 1.0F}, off), 1008);
    EXPECT_EQ(length(1000000, 11025, {7, 7, 7, 7, 1.0F}), 1);
    EXPECT_EQ(length(10, 1000000, kRange), INT32_MAX); // no step at all
    EXPECT_EQ(length(400, 1000000, {0, 3000000, 0, 3000000, 1.0F}), INT32_MAX);
    EXPECT_EQ(length(44100, 44100, {0, INT32_MAX, 0, INT32_MAX, 1.0F}, off), INT32_MAX);
    EXPECT_EQ(CDSPTablesCache::Instance().GetEntryCount(), 0U);
}

} // namespace
} // namespace NSLOPDLL

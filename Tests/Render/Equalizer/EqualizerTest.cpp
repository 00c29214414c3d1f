#include "LoopLibrary/Render/Equalizer/CEqualizerEffect.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"
#include "Tests/Render/RenderTestTools.h"

#include <array>
#include <cmath>
#include <limits>

namespace NSLOPDLL {
namespace {

CTestBlock MakeNoiseBlock(CTestNoise& noise) {
    CTestBlock block;
    for (size_t i = 0; i < 64; ++i) {
        block.fLeft[i] = noise.NextFloat();
        block.fRight[i] = noise.NextFloat();
    }
    return block;
}

void SwitchOn(CEqualizerEffect& equalizer) {
    equalizer.SetEnabled(true);
    equalizer.SetRunFlag(true);
}

// What is left of the way after n blocks is 0.95 to the power of n: 5.1 percent after 58.
TEST(Equalizer, GlidesTowardItsTargetsAlsoWhileOff) {
    CEqualizerEffect equalizer(44100);
    equalizer.SetBand1Frequency(3000);
    equalizer.SetHighCut(100);
    CTestBlock block;
    for (int32_t i = 0; i < 58; ++i) {
        equalizer.Process(block.Buffers());
    }
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 3000.0F - 0.05104F * 2900.0F, 0.1F);
    EXPECT_NEAR(equalizer.GetParameters().fHighCut, 100.0F + 0.05104F * 19900.0F, 1.0F);

    SwitchOn(equalizer); // no sweep at a start
    equalizer.Process(block.Buffers());
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 3000.0F, 1e-3F);
}

TEST(Equalizer, SwitchingOrCopyingClearsTheMemories) {
    CTestNoise noise(2);
    const CTestBlock source = MakeNoiseBlock(noise);
    const auto process = [&source](CEqualizerEffect& effect) {
        CTestBlock block = source;
        effect.Process(block.Buffers());
        return block;
    };
    CEqualizerEffect equalizer(44100);
    SwitchOn(equalizer);
    const CTestBlock first = process(equalizer);
    EXPECT_NE(process(equalizer), first);
    CEqualizerEffect copy(equalizer);
    EXPECT_EQ(process(copy), first);
    equalizer.SetRunFlag(false);
    EXPECT_EQ(process(equalizer), source);
    SwitchOn(equalizer);
    EXPECT_EQ(process(equalizer), first);
}

// Worked out apart from this code, by the formulas in double: the coefficients, and the first
// frames that come of a click. Float rounding is all that may lie between.
TEST(Equalizer, CoefficientsAndClicksAsWorkedOut) {
    const struct {
        int32_t fRate;
        std::array<int16_t, 8> fSettings; // low cut; frequency, Q and gain of both bands; high cut
        std::array<float, 14> fCoefficients;
        std::array<float, 6> fClick;
    } rows[] = {
        {44100, // a deep cut narrows the second band
         {120, 1000, 2000, 6000, 8000, 3000, -12000, 9000},
         {0.03439389F, 0.9312122F, 1.911644F, 0.9952633F, 0.5326681F, -0.06533622F, 0.3904745F,
          -0.7488103F, 1.975674F, 0.9761074F, 0.9999635F, 0.1126854F, 0.03921268F, 0.9265273F},
         {0.5886599F, -0.03165837F, 0.3048663F, 0.1665834F, 0.0829792F, 0.03991332F}},
        {11025, // one of 1 decibel does not; a flat band leaves a trace; 5000 Hz is the top
         {12000, 100, 1000, -1000, 16000, 1000, 0, 20000},
         {0.02770569F, 0.9445886F, 1.941432F, -0.108748F, 0.5875878F, -0.1751756F, -0.7898917F,
          1.013279e-06F, -0.2552927F, 0.01776661F, 0.1455192F, -0.0001143304F, 3.563292e-09F,
          1.000114F},
         {0.1450975F, -0.3281052F, 0.2272184F, -0.0521949F, 0.009287595F, -0.001444305F}},
    };
    for (const auto& row : rows) {
        CEqualizerEffect equalizer(row.fRate);
        SwitchOn(equalizer);
        equalizer.SetLowCut(row.fSettings[0]);
        equalizer.SetBand1Frequency(row.fSettings[1]);
        equalizer.SetBand1Q(row.fSettings[2]);
        equalizer.SetBand1Gain(row.fSettings[3]);
        equalizer.SetBand2Frequency(row.fSettings[4]);
        equalizer.SetBand2Q(row.fSettings[5]);
        equalizer.SetBand2Gain(row.fSettings[6]);
        equalizer.SetHighCut(row.fSettings[7]);
        CTestBlock block;
        block.fLeft[0] = 1.0F;
        equalizer.Process(block.Buffers());
        const auto& [band1, band2, low, high] = equalizer.GetCoefficients();
        const std::array<float, 14> found = {
            band1.fA,    band1.fB, band1.fC, band1.fGain, band2.fA, band2.fB, band2.fC,
            band2.fGain, low.fA,   low.fB,   low.fGain,   high.fA,  high.fB,  high.fGain};
        for (size_t i = 0; i < found.size(); ++i) {
            const float expected = row.fCoefficients[i];
            EXPECT_NEAR(found[i], expected, 2e-6F * std::fabs(expected)) << i;
        }
        for (size_t i = 0; i < row.fClick.size(); ++i) {
            EXPECT_NEAR(block.fLeft[i], row.fClick[i], 1e-6F) << i;
        }
    }
}

// Against the plain form, while a parameter glides. One channel's overflow silences both channels,
// clears the memories of both, and nothing else.
TEST(Equalizer, GivesTheBitsOfTwoPlainChannelsAndRecoversFromOverflow) {
    CTestNoise noise(3);
    CEqualizerEffect equalizer(48000);
    SwitchOn(equalizer);
    equalizer.SetBand1Gain(9000);
    equalizer.SetBand2Gain(-7000);
    equalizer.SetLowCut(80);
    equalizer.SetHighCut(9000);
    CEqualizerState plain[2];
    for (int32_t i = 0; i < 50; ++i) {
        CTestBlock block = MakeNoiseBlock(noise);
        if (i == 20 || i == 40) {
            (i == 20 ? block.fLeft : block.fRight)[5] = std::numeric_limits<float>::infinity();
        }
        CTestBlock expected = block;
        equalizer.Process(block.Buffers());
        FilterChannel(equalizer.GetCoefficients(), plain[0], expected.fLeft.data());
        FilterChannel(equalizer.GetCoefficients(), plain[1], expected.fRight.data());
        if (i == 20 || i == 40) {
            plain[0] = plain[1] = {};
            expected = {};
        }
        ASSERT_EQ(block, expected) << i;
        equalizer.SetBand1Frequency(3000); // from the second block on
    }
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 3000.0F - 0.08099F * 2900.0F, 0.1F);
}

// At rest after some hundred blocks, a target, the rate and a reset each bring the coefficients up
// to date: the next ones are those of an equalizer that came to rest with what is set now.
TEST(Equalizer, CoefficientsFollowTheirParametersOutOfRest) {
    const auto rest = [](CEqualizerEffect& equalizer) {
        SwitchOn(equalizer);
        CTestBlock block;
        for (int32_t i = 0; i < 1000; ++i) {
            equalizer.Process(block.Buffers());
        }
        return equalizer.GetCoefficients().fBand1.fC;
    };
    CEqualizerEffect equalizer(44100);
    const float first = rest(equalizer);
    equalizer.SetBand1Frequency(3000);
    const float moved = rest(equalizer);
    EXPECT_LT(moved, first);
    equalizer.SetSampleRate(96000);
    const float atOtherRate = rest(equalizer);
    EXPECT_GT(atOtherRate, moved);
    equalizer.Reset();
    EXPECT_EQ(equalizer.GetCoefficients().fBand1.fC, 0.0F);
    EXPECT_NEAR(rest(equalizer), atOtherRate, 1e-6F);
}

} // namespace
} // namespace NSLOPDLL

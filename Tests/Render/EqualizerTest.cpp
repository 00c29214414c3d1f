#include "LoopLibrary/Render/CEqualizerEffect.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <cmath>

namespace NSLOPDLL {
namespace {

CTestBlock MakeNoiseBlock(CTestNoise& noise) {
    CTestBlock block;
    for (size_t i = 0; i < 64; ++i) {
        block.fLeft[i] = static_cast<float>(noise.Within(-32768, 32767)) * 0x1p-15F;
        block.fRight[i] = static_cast<float>(noise.Within(-32768, 32767)) * 0x1p-15F;
    }
    return block;
}

void SwitchOn(CEqualizerEffect& equalizer) {
    equalizer.SetEnabled(true);
    equalizer.SetRunFlag(true);
}

// How much louder a sine comes out, in decibels, once the filters have settled.
double Response(CEqualizerEffect& equalizer, double frequency) {
    equalizer.Reset();
    const double w = 2.0 * std::acos(-1.0) * frequency / 44100.0;
    double out = 0.0;
    for (int32_t block = 0; block < 400; ++block) {
        CTestBlock sine;
        for (size_t i = 0; i < 64; ++i) {
            sine.fLeft[i] = static_cast<float>(0.1 * std::sin(w * (block * 64.0 + double(i))));
        }
        equalizer.Process(sine.Buffers());
        for (size_t i = 0; block >= 200 && i < 64; ++i) {
            out += std::pow(static_cast<double>(sine.fLeft[i]), 2);
        }
    }
    return 10.0 * std::log10(out / (200 * 64 * 0.1 * 0.1 / 2.0));
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
    CEqualizerEffect equalizer(44100);
    SwitchOn(equalizer);
    const CTestBlock source = MakeNoiseBlock(noise);
    const auto process = [&source](CEqualizerEffect& effect) {
        CTestBlock block = source;
        effect.Process(block.Buffers());
        return block;
    };
    const CTestBlock first = process(equalizer);
    EXPECT_NE(process(equalizer), first);
    CEqualizerEffect copy(equalizer);
    EXPECT_EQ(process(copy), first);
    equalizer.SetRunFlag(false);
    EXPECT_EQ(process(equalizer), source);
    equalizer.SetRunFlag(true);
    EXPECT_EQ(process(equalizer), first);
}

TEST(Equalizer, FiltersTheSpectrum) {
    const auto response = [](int16_t gain1, int16_t gain2, double frequency) {
        CEqualizerEffect equalizer(44100);
        SwitchOn(equalizer);
        equalizer.SetBand1Frequency(1000);
        equalizer.SetBand1Gain(gain1);
        equalizer.SetBand2Frequency(8000);
        equalizer.SetBand2Gain(gain2);
        equalizer.SetBand2Q(2000);
        return Response(equalizer, frequency);
    };
    EXPECT_NEAR(response(12000, 0, 1000.0), 12.0, 0.2);
    EXPECT_NEAR(response(-18000, 0, 1000.0), -18.0, 0.5);
    EXPECT_NEAR(response(0, 6000, 8000.0), 6.0, 1.0); // the high cut lifts a little here
    EXPECT_NEAR(response(0, 0, 1000.0), 0.0, 0.1);
    EXPECT_NEAR(response(12000, 12000, 30.0), 0.0, 0.5);

    CEqualizerEffect equalizer(44100);
    SwitchOn(equalizer);
    equalizer.SetLowCut(4000);
    EXPECT_LT(Response(equalizer, 100.0), -40.0);
    equalizer.SetLowCut(15);
    equalizer.SetHighCut(200);
    EXPECT_LT(Response(equalizer, 10000.0), -40.0);
}

TEST(Equalizer, StereoFormGivesTheBitsOfTwoChannels) {
    CTestNoise noise(3);
    CEqualizerEffect equalizer(48000);
    equalizer.SetBand1Gain(9000);
    equalizer.SetBand2Gain(-7000);
    equalizer.SetLowCut(80);
    equalizer.SetHighCut(9000);
    CEqualizerState plain[2];
    CEqualizerState stereo[2];
    for (int32_t i = 0; i < 50; ++i) {
        CTestBlock block = MakeNoiseBlock(noise);
        CTestBlock expected = block;
        CTestBlock unused;
        equalizer.Process(unused.Buffers());
        const CEqualizerCoefficients& coefficients = equalizer.GetCoefficients();
        FilterChannel(coefficients, plain[0], expected.fLeft.data());
        FilterChannel(coefficients, plain[1], expected.fRight.data());
        FilterStereoSse2(coefficients, stereo[0], stereo[1], block.Buffers());
        ASSERT_EQ(block, expected) << i;
    }
}

} // namespace
} // namespace NSLOPDLL

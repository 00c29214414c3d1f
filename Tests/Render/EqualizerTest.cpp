#include "LoopLibrary/Render/CEqualizerEffect.h"
#include "Tests/Render/RenderTestTools.h"

#include <cmath>

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

// How much louder a sine comes out, in decibels, once the filters have settled.
double Response(CEqualizerEffect& equalizer, double frequency) {
    const double w = 2.0 * std::acos(-1.0) * frequency / 44100.0;
    double power = 0.0;
    for (int32_t block = 0; block < 400; ++block) {
        CTestBlock sine;
        for (size_t i = 0; i < 64; ++i) {
            sine.fLeft[i] = static_cast<float>(std::sin(w * (block * 64.0 + double(i))));
        }
        equalizer.Process(sine.Buffers());
        for (const float value : sine.fLeft) {
            power += block < 200 ? 0.0 : static_cast<double>(value * value) / (200 * 64 / 2);
        }
    }
    return 10.0 * std::log10(power);
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

TEST(Equalizer, FiltersTheSpectrum) {
    const struct {
        int16_t fGain1, fGain2, fLowCut, fHighCut;
        double fFrequency, fResponse, fRoom;
    } rows[] = {
        {12000, 0, 20, 20000, 1000.0, 12.0, 0.2}, {-18000, 0, 20, 20000, 1000.0, -18.0, 0.5},
        {0, 6000, 20, 20000, 8000.0, 6.0, 1.0}, // the high cut lifts a little here
        {0, 0, 20, 20000, 1000.0, 0.0, 0.1},      {12000, 12000, 20, 20000, 30.0, 0.0, 0.5},
        {0, 0, 4000, 20000, 100.0, -90.0, 50.0},  {0, 0, 20, 200, 10000.0, -90.0, 50.0},
    };
    for (const auto& row : rows) {
        CEqualizerEffect equalizer(44100);
        SwitchOn(equalizer);
        equalizer.SetBand1Frequency(1000);
        equalizer.SetBand1Gain(row.fGain1);
        equalizer.SetBand2Frequency(8000);
        equalizer.SetBand2Gain(row.fGain2);
        equalizer.SetBand2Q(2000);
        equalizer.SetLowCut(row.fLowCut);
        equalizer.SetHighCut(row.fHighCut);
        EXPECT_NEAR(Response(equalizer, row.fFrequency), row.fResponse, row.fRoom);
    }
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

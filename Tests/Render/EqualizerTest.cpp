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
double Response(CEqualizerEffect& equalizer, double frequency, double rate) {
    equalizer.Reset();
    const double w = 2.0 * std::acos(-1.0) * frequency / rate;
    double in = 0.0;
    double out = 0.0;
    for (int32_t block = 0; block < 400; ++block) {
        CTestBlock sine;
        for (size_t i = 0; i < 64; ++i) {
            sine.fLeft[i] = static_cast<float>(0.1 * std::sin(w * (block * 64.0 + double(i))));
        }
        const CTestBlock source = sine;
        equalizer.Process(sine.Buffers());
        for (size_t i = 0; block >= 200 && i < 64; ++i) {
            in += std::pow(static_cast<double>(source.fLeft[i]), 2);
            out += std::pow(static_cast<double>(sine.fLeft[i]), 2);
        }
    }
    return 10.0 * std::log10(out / in);
}

TEST(Equalizer, LeavesTheAudioAloneWhileOff) {
    CTestNoise noise(1);
    for (const bool enabled : {false, true}) {
        CEqualizerEffect equalizer(44100);
        equalizer.SetBand1Gain(12000);
        equalizer.SetEnabled(enabled);
        equalizer.SetRunFlag(!enabled);
        CTestBlock block = MakeNoiseBlock(noise);
        const CTestBlock source = block;
        equalizer.Process(block.Buffers());
        EXPECT_EQ(block, source);
    }
}

// What is left of the way after n blocks is 0.95 to the power of n: 5.1 percent after 58.
TEST(Equalizer, GlidesTowardItsTargetsAlsoWhileOff) {
    CEqualizerEffect equalizer(44100);
    equalizer.SetBand1Frequency(3000);
    equalizer.SetHighCut(100);
    CTestBlock block;
    equalizer.Process(block.Buffers());
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 100.0F + 0.05F * 2900.0F, 1e-3F);
    for (int32_t i = 1; i < 58; ++i) {
        equalizer.Process(block.Buffers());
    }
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 3000.0F - 0.05104F * 2900.0F, 0.1F);
    EXPECT_NEAR(equalizer.GetParameters().fHighCut, 100.0F + 0.05104F * 19900.0F, 1.0F);

    SwitchOn(equalizer); // no sweep at a start
    equalizer.Process(block.Buffers());
    EXPECT_NEAR(equalizer.GetParameters().fBand1Frequency, 3000.0F, 1e-3F);
    EXPECT_EQ(equalizer.GetTargets().fHighCut, 100.0F);
}

TEST(Equalizer, SwitchingClearsTheMemories) {
    CTestNoise noise(2);
    CEqualizerEffect equalizer(44100);
    SwitchOn(equalizer);
    const CTestBlock source = MakeNoiseBlock(noise);
    CTestBlock first = source;
    equalizer.Process(first.Buffers());
    CTestBlock second = source;
    equalizer.Process(second.Buffers());
    EXPECT_NE(second, first);

    CEqualizerEffect copy(equalizer);
    equalizer.SetRunFlag(false);
    CTestBlock idle;
    equalizer.Process(idle.Buffers());
    equalizer.SetRunFlag(true);
    for (CEqualizerEffect* fresh : {&copy, &equalizer}) {
        CTestBlock again = source;
        fresh->Process(again.Buffers());
        EXPECT_EQ(again, first);
    }
}

TEST(Equalizer, FiltersTheSpectrum) {
    const struct {
        const char* fName;
        int16_t fLowCut, fGain1, fGain2, fHighCut;
        double fFrequency;
        double fDecibels;
        double fRoom;
    } cases[] = {
        {"band 1 up", 15, 12000, 0, 20000, 1000.0, 12.0, 0.2},
        {"band 2 up", 15, 0, 6000, 20000, 8000.0, 6.0, 1.0}, // the high cut lifts a little here
        {"band 1 down", 15, -18000, 0, 20000, 1000.0, -18.0, 0.5},
        {"flat", 15, 0, 0, 20000, 1000.0, 0.0, 0.1},
        {"away from the bands", 15, 12000, 12000, 20000, 30.0, 0.0, 0.5},
    };
    for (const auto& c : cases) {
        CEqualizerEffect equalizer(44100);
        SwitchOn(equalizer);
        equalizer.SetLowCut(c.fLowCut);
        equalizer.SetBand1Frequency(1000);
        equalizer.SetBand1Gain(c.fGain1);
        equalizer.SetBand2Frequency(8000);
        equalizer.SetBand2Gain(c.fGain2);
        equalizer.SetBand2Q(2000);
        equalizer.SetHighCut(c.fHighCut);
        EXPECT_NEAR(Response(equalizer, c.fFrequency, 44100.0), c.fDecibels, c.fRoom) << c.fName;
    }
    CEqualizerEffect equalizer(44100);
    SwitchOn(equalizer);
    equalizer.SetLowCut(4000);
    EXPECT_LT(Response(equalizer, 100.0, 44100.0), -40.0);
    equalizer.SetLowCut(15);
    equalizer.SetHighCut(200);
    EXPECT_LT(Response(equalizer, 10000.0, 44100.0), -40.0);
}

TEST(Equalizer, FrequenciesStopAtTheTop) {
    CTestBlock block;
    CEqualizerEffect high(11025);
    CEqualizerEffect top(11025);
    high.SetBand2Frequency(16000);
    high.SetHighCut(20000);
    top.SetBand2Frequency(5000); // the top is 4999.9998
    top.SetHighCut(5000);
    high.Reset();
    top.Reset();
    high.Process(block.Buffers());
    top.Process(block.Buffers());
    EXPECT_EQ(high.GetCoefficients().fBand2.fC, top.GetCoefficients().fBand2.fC);
    EXPECT_EQ(high.GetCoefficients().fHigh.fA, top.GetCoefficients().fHigh.fA);

    high.SetSampleRate(44100);
    high.Process(block.Buffers());
    EXPECT_NE(high.GetCoefficients().fBand2.fC, top.GetCoefficients().fBand2.fC);
    high.SetSampleRate(1);
    EXPECT_EQ(high.GetSampleRate(), 11025);
}

// Worked out in double from the analogue of the text-book resonator: w is 2 pi f / rate, and t is
// (q - w / 2) / (2 q + w), where a cut of more than 1 dB makes q narrower.
TEST(Equalizer, BandCoefficientsFollowFrequencyGainAndQ) {
    CTestBlock block;
    for (const int gain : {0, 6000, -1000, -18000}) {
        CEqualizerEffect equalizer(44100);
        equalizer.SetBand1Frequency(1000);
        equalizer.SetBand1Gain(static_cast<int16_t>(gain));
        equalizer.Reset();
        equalizer.Process(block.Buffers());
        const double q = gain == -18000 ? 2.0 / 18.0 : 1.0;
        const double w = 2.0 * std::acos(-1.0) * 1000.0 / 44100.0;
        const double t = (q - w / 2.0) / (2.0 * q + w);
        const CEqualizerBand& band = equalizer.GetCoefficients().fBand1;
        EXPECT_NEAR(band.fA, 0.5 - t, 1e-6) << gain;
        EXPECT_NEAR(band.fB, 2.0 * t, 1e-6);
        EXPECT_NEAR(band.fC, 2.0 * std::cos(w) * (t + 0.5), 1e-6);
        EXPECT_NEAR(band.fGain, std::pow(10.0, gain / 20000.0) - 1.0 + 1.0132789612e-6, 1e-7);
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

#include "LoopWriter/SyntheticLoop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace LoopWriterTests {
namespace {

using namespace NSLoopWriter;

TEST(SyntheticLoop, NoiseIsTheGeneratorsHighBits) {
    // 1 * 1664525 + 1013904223 is 1015568748, without its low 8 bits 3967065, less 2^23.
    EXPECT_EQ(CNoise(1).Next(), -4421543);
    EXPECT_EQ(MakeNoise(1, 24, 1)[0], -4421543);
    EXPECT_EQ(MakeNoise(1, 16, 1)[0], -17272); // rounded down from -17271.7
}

TEST(SyntheticLoop, SignalsKeepToTheirRange) {
    const size_t frames = 100000;
    EXPECT_EQ(MakeFullScaleSquare(4, 16, 1), (Plane{32767, -32768, 32767, -32768}));
    EXPECT_EQ(MakeTransients(12, 16, 8),
              (Plane{0, 0, 0, 0, 32767, -16383, 8191, -4095, 2047, -1023, 511, -255}));
    const Plane sine = MakeSine(frames, 16, 3000);
    const auto [low, high] = std::minmax_element(sine.end() - 1000, sine.end());
    EXPECT_NEAR(*low, -16384, 500); // it neither dies away nor grows
    EXPECT_NEAR(*high, 16384, 500);
}

// The figures are the generator's own: they say that every compiler and system reaches the same.
TEST(SyntheticLoop, IsTheSameEverywhere) {
    const auto hash = [](const Plane& plane) {
        uint32_t value = 2166136261;
        for (const int32_t sample : plane) {
            value = (value ^ static_cast<uint32_t>(sample)) * 16777619;
        }
        return value;
    };
    const SDrumLoop loop = MakeDrumLoop({.fBitDepth = 24, .fStereo = true});
    EXPECT_EQ(hash(loop.fLeft), 2740250335u);
    EXPECT_EQ(hash(loop.fRight), 2615140246u);
    EXPECT_EQ(hash(MakeSine(10000, 24, 3000)), 3718546066u);
}

} // namespace
} // namespace LoopWriterTests

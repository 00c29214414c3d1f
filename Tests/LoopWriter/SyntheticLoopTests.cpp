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

TEST(SyntheticLoop, DrumsSoundOnEachHit) {
    for (const int32_t bits : {16, 24}) {
        const SDrumLoop loop = MakeDrumLoop({.fBitDepth = bits, .fStereo = true});
        ASSERT_EQ(loop.fHits.size(), 8u);
        ASSERT_EQ(loop.fLeft.size(), 88200u);
        EXPECT_NE(loop.fLeft, loop.fRight);
        const int32_t fullScale = 1 << (bits - 1);
        for (const uint32_t hit : loop.fHits) {
            for (const Plane* plane : {&loop.fLeft, &loop.fRight}) {
                const auto start = plane->begin() + hit;
                const auto peak = [](auto first, auto last) {
                    const auto [low, high] = std::minmax_element(first, last);
                    return std::max(-*low, *high);
                };
                EXPECT_GT(peak(start, start + 400), fullScale / 20);
                EXPECT_LT(peak(start, start + loop.fFramesPerHit), fullScale);
                EXPECT_LT(peak(start + 11000, start + 11025), fullScale / 10);
            }
        }
    }
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

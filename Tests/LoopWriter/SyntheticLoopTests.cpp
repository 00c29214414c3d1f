#include "LoopWriter/SyntheticLoop.h"

#include <gtest/gtest.h>

namespace LoopWriterTests {
namespace {

using namespace NSLoopWriter;

TEST(SyntheticLoop, SignalsAreWhatTheyAreCalled) {
    // 1 * 1664525 + 1013904223 is 1015568748, without its low 8 bits 3967065, less 2^23.
    EXPECT_EQ(MakeNoise(1, 24, 1)[0], -4421543);
    EXPECT_EQ(MakeNoise(1, 16, 1)[0], -17272); // rounded down from -17271.7
    EXPECT_EQ(MakeFullScaleSquare(4, 16, 1), (Plane{32767, -32768, 32767, -32768}));
    EXPECT_EQ(MakeTransients(12, 16, 8),
              (Plane{0, 0, 0, 0, 32767, -16383, 8191, -4095, 2047, -1023, 511, -255}));
}

// The figures are the generator's own: they say that every compiler and system reaches the same.
TEST(SyntheticLoop, IsTheSameEverywhere) {
    const SDrumLoop loop = MakeDrumLoop({.fBitDepth = 24, .fStereo = true});
    const std::pair<Plane, uint32_t> hashes[] = {{loop.fLeft, 2740250335},
                                                 {loop.fRight, 2615140246},
                                                 {MakeSine(10000, 24, 3000), 3718546066}};
    for (const auto& [plane, expected] : hashes) {
        uint32_t hash = 2166136261;
        for (const int32_t sample : plane) {
            hash = (hash ^ static_cast<uint32_t>(sample)) * 16777619;
        }
        EXPECT_EQ(hash, expected);
    }
}

} // namespace
} // namespace LoopWriterTests

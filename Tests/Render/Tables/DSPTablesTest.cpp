#include "LoopLibrary/Render/Common/FloatMath.h"
#include "LoopLibrary/Render/Slices/LegacyTimeIndex.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"
#include "LoopLibrary/Render/Tables/CDSPTablesCache.h"

#include <gtest/gtest.h>

#include <cmath>

namespace NSLOPDLL {
namespace {

// The exact values rounded once, by the forms of extended precision. The C libraries' float forms
// miss some of these.
TEST(FloatMath, RoundsTheExactValues) {
    constexpr int32_t kSteps = 50000;
    for (int32_t i = 1; i <= kSteps; ++i) {
        const float part = static_cast<float>(i) / kSteps;
        const auto exact = static_cast<long double>(part);
        EXPECT_EQ(FloatPow(0.25F, part), static_cast<float>(std::pow(0.25L, exact))) << part;
        EXPECT_EQ(FloatExp(-4.0F * part), static_cast<float>(std::exp(-4.0L * exact))) << part;
        EXPECT_EQ(FloatLog(part), static_cast<float>(std::log(exact))) << part;
        EXPECT_EQ(FloatCos(3.0F * part),
                  static_cast<float>(std::cos(static_cast<long double>(3.0F * part))))
            << part;
    }
}

// The digits come with eight figures, which leave room for one unit in a float's last place.
TEST(DSPTables, EnvelopeTablesHoldTheirValues) {
    const CDSPTables tables(44100);
    const struct {
        int32_t fIndex;
        double fTime, fAttack, fDecay;
    } rows[] = {
        {0, 0.1, 14.512472, 0.0000000018307},        {1, 0.13740434, 10.561873, 0.00000043764},
        {21, 0.96348226, 1.5062522, 0.12392126},     {193, 20.210993, 0.071804844, 0.90525132},
        {350, 100.05588, 0.014504368, 0.98009348},   {512, 465.66342, 0.0031165155, 0.99568892},
        {749, 4259.0332, 0.00034074570, 0.99952775}, {1023, 54607.871, 0.000026575788, 1.0},
    };
    for (const auto& row : rows) {
        const double room = row.fIndex < 2 ? 1e-4 : 1.2e-7; // the first factors have fewer digits
        EXPECT_NEAR(tables.GetTimes()[row.fIndex], row.fTime, row.fTime * 1.2e-7) << row.fIndex;
        EXPECT_NEAR(tables.GetAttackRates()[row.fIndex], row.fAttack, row.fAttack * 1.2e-7);
        EXPECT_NEAR(tables.GetDecayFactors()[row.fIndex], row.fDecay, row.fDecay * room);
    }
    EXPECT_EQ(tables.GetDecayFactors()[1023], 1.0F);
    EXPECT_NEAR(CDSPTables(11025).GetAttackRates()[700], tables.GetAttackRates()[700] * 4.0F,
                1e-9F);
}

TEST(DSPTables, PitchTableIsInCents) {
    const uint32_t* pitch = CDSPTables::GetPitchTable();
    EXPECT_EQ(pitch[0], 10U);
    EXPECT_EQ(pitch[12900], 16384U);
    EXPECT_EQ(pitch[19199], 623127U);
    for (int32_t i = 0; i < kPitchTableSize; ++i) {
        EXPECT_NEAR(pitch[i], 16384.0 * std::exp2((i - 12900) / 1200.0), 0.501) << i;
    }
}

// The values between the corners are a Hamming window over 1536 points times a sinc, worked out
// directly; the table differs by the correction of its phase, the same on all six taps.
TEST(DSPTables, KernelIsAWindowedSinc) {
    const float* table = CDSPTables::GetInterpolationTable();
    const double pi = std::acos(-1.0);
    for (int32_t phase = 1; phase < 256; ++phase) {
        double sum = 0.0;
        double correction = 0.0;
        for (int32_t row = 0; row < 6; ++row) {
            const double x = pi * (row * 256 + phase - 768) / 256.0;
            const double tap = static_cast<double>(table[row * 256 + phase]);
            const double difference = tap - (0.54 + 0.46 * std::cos(x / 3.0)) * std::sin(x) / x;
            correction = row == 0 ? difference : correction;
            EXPECT_NEAR(difference, correction, 3e-7) << row << ", " << phase;
            sum += tap;
        }
        EXPECT_NEAR(sum, 1.0, 2e-7) << phase;
    }
    EXPECT_NEAR(table[768], 1.0F, 2e-3F);
}

TEST(DSPTablesCache, CountsReferencesByRate) {
    CDSPTablesCache cache;
    cache.Release(44100);
    EXPECT_EQ(cache.Find(44100), nullptr);
    const CDSPTables* tables = cache.Acquire(44100);
    EXPECT_EQ(cache.Acquire(44100), tables);
    const CDSPTables* others = cache.Acquire(48000);
    EXPECT_EQ(cache.Find(44100), tables);
    EXPECT_EQ(cache.Find(96000), others); // absent: the newest entry
    cache.Release(96000);
    cache.Release(44100);
    EXPECT_EQ(cache.GetReferenceCount(44100), 1);
    cache.Release(44100);
    EXPECT_EQ(cache.GetEntryCount(), 1U);
    EXPECT_EQ(cache.Find(44100), others);
}

// Worked by hand: the old scale's time is 4 * 1.1 ^ (value * 100 / 128) ms, and the table's i-th
// time 4 * 1.1 ^ (i * 100 / 1024) - 3.9. For 0 that is 4 ms, between 73 (3.991) and 74 (4.065). For
// long times the 3.9 hardly count, and the index comes out near 8 times the value.
TEST(LegacyTimeIndex, FindsTheNearestTime) {
    EXPECT_EQ(LegacyTimeIndex(127, true, 44100), 1023);
    for (const auto& [value, index] :
         {std::pair{127, 1016}, {0, 73}, {64, 513}, {126, 1008}, {500, 1023}}) {
        EXPECT_EQ(LegacyTimeIndex(value, false, 11025), index);
    }
    EXPECT_EQ(CDSPTablesCache::Instance().GetReferenceCount(11025), 0);
}

} // namespace
} // namespace NSLOPDLL

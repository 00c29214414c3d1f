#include "LoopLibrary/Render/CDSPTables.h"
#include "LoopLibrary/Render/CDSPTablesCache.h"
#include "LoopLibrary/Render/LegacyTimeIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>
#include <vector>

namespace NSLOPDLL {
namespace {

// The digits come with eight figures, which leave room for one unit in a float's last place where
// power functions of different platforms differ.
TEST(DSPTables, EnvelopeTablesHoldTheirValues) {
    const CDSPTables tables(44100);
    const struct {
        int32_t fIndex;
        double fTime;
        double fAttack;
        double fDecay;
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
    const CDSPTables slow(11025);
    EXPECT_EQ(slow.GetTimes()[700], tables.GetTimes()[700]);
    EXPECT_NEAR(slow.GetAttackRates()[700], tables.GetAttackRates()[700] * 4.0F, 1e-9F);
}

TEST(DSPTables, PitchTableIsInCents) {
    const uint32_t* pitch = CDSPTables::GetPitchTable();
    EXPECT_EQ(pitch[12900], 16384U);
    EXPECT_EQ(pitch[11700], 8192U);
    EXPECT_EQ(pitch[14100], 32768U);
    EXPECT_EQ(pitch[0], 10U);
    EXPECT_EQ(pitch[19199], 623127U);
    for (int32_t i = 0; i < kPitchTableSize; ++i) {
        EXPECT_NEAR(pitch[i], 16384.0 * std::exp2((i - 12900) / 1200.0), 0.501) << i;
    }
}

// A Hamming window over 1536 points times a sinc with a zero at each whole frame, worked out
// directly; the table differs by the correction of its phase, which is under a hundredth.
TEST(DSPTables, KernelIsAWindowedSinc) {
    const float* table = CDSPTables::GetInterpolationTable();
    const float* byPhase = CDSPTables::GetInterpolationTableByPhase();
    const double pi = std::acos(-1.0);
    for (int32_t phase = 0; phase < 256; ++phase) {
        double sum = 0.0;
        double correction = 0.0;
        for (int32_t row = 0; row < 6; ++row) {
            const int32_t at = row * 256 + phase;
            const double x = pi * (at - 768) / 256.0;
            const double sinc = x == 0.0 ? 1.0 : std::sin(x) / x;
            const double window = at == 0 ? 0.0 : 0.54 + 0.46 * std::cos(x / 3.0);
            const double difference = static_cast<double>(table[at]) - window * sinc;
            if (row == 0) {
                correction = difference;
            }
            EXPECT_NEAR(difference, correction, 3e-7) << at;
            sum += static_cast<double>(table[at]);
            EXPECT_EQ(byPhase[phase * kPhaseStride + 5 - row], table[at]);
        }
        EXPECT_NEAR(sum, 1.0, 2e-7) << phase;
        EXPECT_LT(std::fabs(correction), 0.01);
        EXPECT_EQ(byPhase[phase * kPhaseStride + 6], 0.0F);
        EXPECT_EQ(byPhase[phase * kPhaseStride + 7], 0.0F);
    }
}

TEST(DSPTablesCache, CountsReferencesByRate) {
    CDSPTablesCache cache;
    EXPECT_EQ(cache.Find(44100), nullptr);
    cache.Release(44100);
    const CDSPTables* tables = cache.Acquire(44100);
    EXPECT_EQ(tables->GetSampleRate(), 44100);
    EXPECT_EQ(cache.Acquire(44100), tables);
    const CDSPTables* others = cache.Acquire(48000);
    EXPECT_NE(others, tables);
    EXPECT_EQ(cache.Find(44100), tables);
    EXPECT_EQ(cache.Find(96000), others); // absent: the newest entry
    cache.Release(96000);
    cache.Release(44100);
    EXPECT_EQ(cache.GetReferenceCount(44100), 1);
    cache.Release(44100);
    EXPECT_EQ(cache.GetReferenceCount(44100), 0);
    EXPECT_EQ(cache.GetEntryCount(), 1U);
    EXPECT_EQ(cache.Find(44100), others);
    EXPECT_EQ(cache.Acquire(44100)->GetSampleRate(), 44100);
}

TEST(DSPTablesCache, IsSharedAmongThreads) {
    CDSPTablesCache& cache = CDSPTablesCache::Instance();
    const size_t before = cache.GetEntryCount();
    std::vector<std::thread> threads;
    for (int32_t id = 0; id < 4; ++id) {
        threads.emplace_back([id] {
            for (int32_t i = 0; i < 50; ++i) {
                const int32_t rate = 20000 + (i + id) % 3;
                const CDSPTablesReference first(rate);
                const CDSPTablesReference second(first);
                EXPECT_EQ(second->GetSampleRate(), rate);
                EXPECT_EQ(second->GetDecayFactors()[1023], 1.0F);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(cache.GetEntryCount(), before);
}

// Worked by hand: the old scale's time is 4 * 1.1 ^ (value * 100 / 128) ms, and the table's i-th
// time 4 * 1.1 ^ (i * 100 / 1024) - 3.9. For 0 that is 4 ms, between 73 (3.991) and 74 (4.065). For
// long times the 3.9 hardly count, and the index comes out near 8 times the value.
TEST(LegacyTimeIndex, FindsTheNearestTime) {
    const struct {
        int32_t fValue;
        bool fIsDecay;
        int32_t fIndex;
    } cases[] = {{127, true, 1023},  {0, false, 73},  {0, true, 73},     {126, true, 1008},
                 {127, false, 1016}, {64, true, 513}, {500, false, 1023}};
    for (const auto& c : cases) {
        for (const int32_t rate : {11025, 44100}) {
            EXPECT_EQ(LegacyTimeIndex(c.fValue, c.fIsDecay, rate), c.fIndex) << c.fValue;
        }
    }
    EXPECT_EQ(CDSPTablesCache::Instance().GetReferenceCount(11025), 0);
}

} // namespace
} // namespace NSLOPDLL

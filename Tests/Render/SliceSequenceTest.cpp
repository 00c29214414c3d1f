#include "LoopLibrary/Render/CSliceSequence.h"
#include "LoopLibrary/Render/SliceGate.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <vector>

namespace NSLOPDLL {
namespace {

CSlice MakeSlice(uint32_t position, int32_t kind = kSliceKind_Forced, int16_t level = 0,
                 bool muted = false) {
    CSlice slice;
    slice.SetPosition(position);
    slice.SetKind(kind);
    slice.SetLevel(level);
    slice.SetMuted(muted);
    return slice;
}

std::vector<uint32_t> Lengths(const CSliceSequence& sequence) {
    std::vector<uint32_t> lengths;
    for (const CSlice& slice : sequence.GetSlices()) {
        lengths.push_back(slice.GetLength());
    }
    return lengths;
}

TEST(SliceSequence, SensitivitySelectsByLevel) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    CSliceSequence sequence(sample.get());
    const struct {
        int32_t fSensitivity;
        int16_t fThreshold;
    } cases[] = {{0, 32767}, {1, 32436}, {50, 16218}, {98, 330}, {99, 0}};
    for (const auto& c : cases) {
        sequence.SetSensitivity(c.fSensitivity);
        EXPECT_EQ(sequence.GetThreshold(), c.fThreshold) << c.fSensitivity;
    }
    sequence.SetSensitivity(50);
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16218)));
    EXPECT_TRUE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16219)));
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Hidden, 32767)));
    EXPECT_TRUE(sequence.IsActive(MakeSlice(0, kSliceKind_Forced, 0)));
}

TEST(SliceSequence, InsertionSortsDropsAndMerges) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    CSliceSequence sequence(sample.get());
    for (const uint32_t outside : {1000U, 5000U, 0x80000000U, 0xFFFFFFFFU}) {
        sequence.InsertSlice(MakeSlice(outside));
    }
    EXPECT_EQ(sequence.GetSliceCount(), 0U);
    sequence.InsertSlice(MakeSlice(999));
    sequence.InsertSlice(MakeSlice(0));
    sequence.InsertSlice(MakeSlice(500, kSliceKind_Hidden, 10, true));
    ASSERT_EQ(sequence.GetSliceCount(), 3U);
    EXPECT_TRUE(sequence.HasSliceAt(500));
    EXPECT_FALSE(sequence.HasSliceAt(501));

    const struct {
        int32_t fKind;
        int16_t fLevel;
        int32_t fKindAfter;
        int16_t fLevelAfter;
    } merges[] = {{kSliceKind_Hidden, 5, kSliceKind_Hidden, 10},
                  {kSliceKind_Level, 20, kSliceKind_Level, 20},
                  {kSliceKind_Hidden, 1, kSliceKind_Level, 20},
                  {kSliceKind_Forced, 1, kSliceKind_Forced, 20},
                  {kSliceKind_Level, 30, kSliceKind_Forced, 30}};
    for (const auto& c : merges) {
        sequence.InsertSlice(MakeSlice(500, c.fKind, c.fLevel, false));
        CSlice slice;
        ASSERT_TRUE(sequence.FindSliceAt(500, slice));
        EXPECT_EQ(slice, MakeSlice(500, c.fKindAfter, c.fLevelAfter, true));
    }
    EXPECT_EQ(sequence.GetSliceCount(), 3U);
}

TEST(SliceSequence, BatchIsInsertionOneByOne) {
    const auto sample = CreateWaveSample(44100, 90, false, 16);
    for (uint32_t seed = 0; seed < 50; ++seed) {
        CTestNoise noise(seed);
        CSliceSequence oneByOne(sample.get());
        CSliceSequence batch(sample.get());
        for (int round = 0; round < 2; ++round) {
            std::vector<CSlice> slices;
            for (int i = 0; i < 60; ++i) {
                slices.push_back(MakeSlice(
                    static_cast<uint32_t>(noise.Within(-3, 99)), noise.Within(1, 3),
                    static_cast<int16_t>(noise.Within(-100, 100)), noise.Within(0, 1) == 1));
                oneByOne.InsertSlice(slices.back());
            }
            batch.InsertSlices(slices);
            ASSERT_EQ(batch.GetSlices(), oneByOne.GetSlices()) << seed;
        }
    }
}

TEST(SliceSequence, ActiveSlicesReachToTheNextActiveOne) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    CSliceSequence sequence(sample.get());
    sequence.InsertSlices({MakeSlice(10, kSliceKind_Hidden), MakeSlice(100),
                           MakeSlice(150, kSliceKind_Level, 5), MakeSlice(300)});
    sequence.UpdateSliceLengths();
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{1, 200, 1, 700}));
    sequence.SetSensitivity(99);
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{1, 50, 150, 700}));
    sequence.RemoveSliceAt(MakeSlice(101));
    sequence.RemoveSliceAt(MakeSlice(301));
    sequence.UpdateSliceLengths();
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{1, 200, 700}));
    sequence.InsertSliceAndUpdate(MakeSlice(999));
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{1, 200, 699, 1}));
}

// In silence the level is 0.9 to the number of windows, and the first of them has 1024 frames, the
// others 128. At a gate of 500 the limit is 0.002 to the power of 0.4995, which is 0.04486: the
// 30th window goes under it.
TEST(SliceSequence, GateEndsASliceWhereTheSoundHasDiedAway) {
    const auto sample = CreateWaveSample(44100, 20000, false, 16);
    CSliceSequence sequence(sample.get());
    sequence.InsertSlices({MakeSlice(0), MakeSlice(10000), MakeSlice(10500)});
    sequence.SetGateLevel(999);
    sample->CreatePreview();
    const struct {
        int32_t fGate;
        std::vector<uint32_t> fLengths;
    } cases[] = {{0, {10000, 500, 9500}},
                 {500, {1024 + 29 * 128, 500, 1024 + 29 * 128}},
                 {999, {1024, 500, 1024}}};
    for (const auto& c : cases) {
        sequence.SetGateLevel(c.fGate);
        EXPECT_EQ(Lengths(sequence), c.fLengths) << c.fGate;
    }
    // A click of 0.5 at frame 3200 is seen by the entries from 3072 on, so by the 17th and 18th
    // window of 128 frames. The 17th lifts the level, and from the 18th on it takes 23 to fall
    // again.
    sample->Set16BitSample(3200, 16384, 1);
    sample->CreatePreview();
    sequence.SetGateLevel(500);
    EXPECT_EQ(sequence.GetSlice(0).GetLength(), 1024U + 17 * 128 + 23 * 128);
}

TEST(SliceSequence, PeakLevelWrapsIn16Bits) {
    const struct {
        bool fStereo;
        int16_t fLeft[2];
        int16_t fRight[2];
        int32_t fPeak;
    } cases[] = {
        {false, {-300, 200}, {0, 0}, 300},     {false, {-200, 300}, {0, 0}, 300},
        {false, {-32767, 0}, {0, 0}, 32767},   {false, {-32768, -32768}, {0, 0}, 0},
        {false, {-32768, 100}, {0, 0}, 100},   {true, {10000, 9000}, {-10000, -9000}, 0},
        {true, {-100, 100}, {-100, 100}, 200}, // the minimum on a tie
        {true, {-100, 101}, {-100, 100}, 1},   {true, {30000, 30000}, {30000, 30000}, 5536},
        {true, {-32768, 7}, {0, 3}, 10}};
    for (const auto& c : cases) {
        const auto sample = CreateWaveSample(44100, 64, c.fStereo, 16);
        EXPECT_EQ(GetPeakLevel(*sample, 0, 64), 0.0F);
        for (int32_t i = 0; i < 64; ++i) {
            sample->Set16BitSample(i, c.fLeft[i % 2], 1);
            if (c.fStereo) {
                sample->Set16BitSample(i, c.fRight[i % 2], 2);
            }
        }
        sample->CreatePreview();
        EXPECT_EQ(GetPeakLevel(*sample, 0, 64), static_cast<float>(c.fPeak) / 32768.0F);
        EXPECT_EQ(GetPeakLevel(*sample, 0, 63), 0.0F);
        EXPECT_EQ(GetPeakLevel(*sample, 1, 5000), GetPeakLevel(*sample, 0, 64));
    }
}

TEST(SliceSequence, FindsNearestAndSnaps) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    CSliceSequence sequence(sample.get());
    CSlice slice = MakeSlice(77);
    EXPECT_FALSE(sequence.FindNearest(5, slice));
    EXPECT_EQ(slice.GetPosition(), 77U);
    EXPECT_EQ(sequence.SnapToSlice(123, 1000), 123U);

    sequence.InsertSlices(
        {MakeSlice(101), MakeSlice(201, kSliceKind_Hidden), MakeSlice(301), MakeSlice(701)});
    const struct {
        uint32_t fAt;
        uint32_t fNearest;
        uint32_t fActive;
        uint32_t fSnapped;
    } cases[] = {{0, 101, 101, 0},     {50, 101, 101, 0},    {51, 101, 101, 101},
                 {151, 101, 101, 101}, {152, 201, 101, 101}, {201, 201, 101, 101},
                 {202, 201, 301, 301}, {850, 701, 701, 701}, {851, 701, 701, 1000},
                 {999, 701, 701, 1000}};
    for (const auto& c : cases) {
        ASSERT_TRUE(sequence.FindNearest(c.fAt, slice));
        EXPECT_EQ(slice.GetPosition(), c.fNearest) << c.fAt;
        ASSERT_TRUE(sequence.FindNearestActive(c.fAt, slice));
        EXPECT_EQ(slice.GetPosition(), c.fActive) << c.fAt;
        EXPECT_EQ(sequence.SnapToSlice(c.fAt, 1000), c.fSnapped) << c.fAt;
    }
}

TEST(SliceSequence, LeadInIsAShortStart) {
    const auto sample = CreateWaveSample(44100, 9000, false, 16);
    const struct {
        uint32_t fFirst;
        uint32_t fLeadIn;
    } cases[] = {{0, 0}, {1, 1}, {3999, 3999}, {4000, 0}};
    for (const auto& c : cases) {
        CSliceSequence sequence(sample.get());
        uint32_t leadIn = 5;
        EXPECT_FALSE(sequence.GetLeadIn(leadIn));
        EXPECT_EQ(leadIn, 0U);
        sequence.InsertSlices({MakeSlice(c.fFirst, kSliceKind_Hidden), MakeSlice(8000)});
        EXPECT_EQ(sequence.GetLeadIn(leadIn), c.fLeadIn != 0);
        EXPECT_EQ(leadIn, c.fLeadIn);
    }
}

} // namespace
} // namespace NSLOPDLL

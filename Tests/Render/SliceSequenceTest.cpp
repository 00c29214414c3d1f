#include "LoopLibrary/Render/CSliceSequence.h"
#include "LoopLibrary/Render/SliceGate.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <utility>
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
    for (const auto& [sensitivity, threshold] : std::initializer_list<std::pair<int32_t, int16_t>>{
             {0, 32767}, {1, 32436}, {50, 16218}, {98, 330}, {99, 0}}) {
        sequence.SetSensitivity(sensitivity);
        EXPECT_EQ(sequence.GetThreshold(), threshold) << sensitivity;
    }
    sequence.SetSensitivity(50);
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16218)));
    EXPECT_TRUE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16219)));
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Hidden, 32767)));
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

    const auto merge = [&](int32_t kind, int16_t level) {
        sequence.InsertSlice(MakeSlice(500, kind, level, false));
        CSlice slice;
        EXPECT_TRUE(sequence.FindSliceAt(500, slice));
        EXPECT_TRUE(slice.IsMuted());
        return std::pair(slice.GetKind(), slice.GetLevel());
    };
    EXPECT_EQ(merge(kSliceKind_Hidden, 5), std::pair(kSliceKind_Hidden, int16_t{10}));
    EXPECT_EQ(merge(kSliceKind_Level, 20), std::pair(kSliceKind_Level, int16_t{20}));
    EXPECT_EQ(merge(kSliceKind_Hidden, 1), std::pair(kSliceKind_Level, int16_t{20}));
    EXPECT_EQ(merge(kSliceKind_Forced, 1), std::pair(kSliceKind_Forced, int16_t{20}));
    EXPECT_EQ(merge(kSliceKind_Level, 30), std::pair(kSliceKind_Forced, int16_t{30}));
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
    sequence.SetGateLevel(0);
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{10000, 500, 9500}));
    sequence.SetGateLevel(999);
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{1024, 500, 1024}));
    sequence.SetGateLevel(500);
    EXPECT_EQ(Lengths(sequence), (std::vector<uint32_t>{4736, 500, 4736}));
    // A click of 0.5 at frame 3200 is seen by the entries from 3072 on, so by the 17th and 18th
    // window of 128 frames. The 17th lifts the level, and from the 18th on it takes 23 to fall
    // again.
    sample->Set16BitSample(3200, 16384, 1);
    sample->CreatePreview();
    sequence.SetGateLevel(500);
    EXPECT_EQ(sequence.GetSlice(0).GetLength(), 1024U + 17 * 128 + 23 * 128);
}

TEST(SliceSequence, PeakLevelWrapsIn16Bits) {
    // The level, times 32768, of one entry with these minima and maxima.
    const auto peak = [](bool stereo, std::initializer_list<int16_t> values) {
        const auto sample = CreateWaveSample(44100, 64, stereo, 16);
        for (int32_t i = 0; i < 64; ++i) {
            sample->Set16BitSample(i, values.begin()[i % 2], 1);
            if (stereo) {
                sample->Set16BitSample(i, values.begin()[2 + i % 2], 2);
            }
        }
        EXPECT_EQ(GetPeakLevel(*sample, 0, 64), 0.0F); // no preview yet
        sample->CreatePreview();
        EXPECT_EQ(GetPeakLevel(*sample, 0, 63), 0.0F);
        EXPECT_EQ(GetPeakLevel(*sample, 1, 5000), GetPeakLevel(*sample, 0, 64));
        return GetPeakLevel(*sample, 0, 64) * 32768.0F;
    };
    EXPECT_EQ(peak(false, {-300, 200}), 300.0F);
    EXPECT_EQ(peak(false, {-200, 300}), 300.0F);
    EXPECT_EQ(peak(false, {-32768, 100}), 100.0F);
    EXPECT_EQ(peak(true, {10000, 9000, -10000, -9000}), 0.0F);
    EXPECT_EQ(peak(true, {-100, 100, -100, 100}), 200.0F); // the minimum on a tie
    EXPECT_EQ(peak(true, {-100, 101, -100, 100}), 1.0F);
    EXPECT_EQ(peak(true, {30000, 30000, 30000, 30000}), 5536.0F);
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
    // The nearest slice, the nearest active one, and where `at` snaps to.
    const auto around = [&](uint32_t at) {
        EXPECT_TRUE(sequence.FindNearest(at, slice));
        const uint32_t nearest = slice.GetPosition();
        EXPECT_TRUE(sequence.FindNearestActive(at, slice));
        return std::vector{nearest, slice.GetPosition(), sequence.SnapToSlice(at, 1000)};
    };
    using V = std::vector<uint32_t>;
    EXPECT_EQ(around(50), (V{101, 101, 0}));
    EXPECT_EQ(around(51), (V{101, 101, 101}));
    EXPECT_EQ(around(151), (V{101, 101, 101}));
    EXPECT_EQ(around(201), (V{201, 101, 101}));
    EXPECT_EQ(around(202), (V{201, 301, 301}));
    EXPECT_EQ(around(850), (V{701, 701, 701}));
    EXPECT_EQ(around(851), (V{701, 701, 1000}));
}

TEST(SliceSequence, LeadInIsAShortStart) {
    const auto sample = CreateWaveSample(44100, 9000, false, 16);
    for (const uint32_t first : {0U, 1U, 3999U, 4000U}) {
        CSliceSequence sequence(sample.get());
        sequence.InsertSlices({MakeSlice(first, kSliceKind_Hidden), MakeSlice(8000)});
        uint32_t leadIn = 5;
        EXPECT_EQ(sequence.GetLeadIn(leadIn), first == 1 || first == 3999);
        EXPECT_EQ(leadIn, first % 4000);
    }
}

} // namespace
} // namespace NSLOPDLL

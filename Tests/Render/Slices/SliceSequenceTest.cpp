#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "LoopLibrary/Render/Slices/SliceGate.h"
#include "Tests/Render/RenderTestTools.h"

#include <algorithm>
#include <map>

namespace NSLOPDLL {
namespace {

using V = std::vector<uint32_t>;

struct SSliced {
    std::unique_ptr<CABCWaveSample> fSample;
    CSliceSequence fSequence{fSample.get()};

    explicit SSliced(uint32_t frames, const std::vector<CSlice>& slices = {})
        : fSample(CreateWaveSample(44100, frames, false, 16)) {
        fSequence.InsertSlices(slices);
    }
    V Lengths() const {
        V lengths;
        for (const CSlice& slice : fSequence.GetSlices()) {
            lengths.push_back(slice.GetLength());
        }
        return lengths;
    }
};

TEST(SliceSequence, SensitivitySelectsByLevel) {
    SSliced sliced(1000);
    CSliceSequence& sequence = sliced.fSequence;
    for (const auto& [sensitivity, threshold] :
         {std::pair{0, 32767}, {1, 32436}, {49, 16548}, {98, 330}, {99, 0}, {50, 16218}}) {
        sequence.SetSensitivity(sensitivity);
        EXPECT_EQ(sequence.GetThreshold(), threshold) << sensitivity;
    }
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16218)));
    EXPECT_TRUE(sequence.IsActive(MakeSlice(0, kSliceKind_Level, 16219)));
    EXPECT_FALSE(sequence.IsActive(MakeSlice(0, kSliceKind_Hidden, 32767)));
}

// Slices outside the sample are dropped. At one position the highest level wins, the strongest kind
// (hidden, level, forced) and the first one's mute.
TEST(SliceSequence, InsertionSortsDropsAndMerges) {
    for (uint32_t seed = 0; seed < 50; ++seed) {
        CTestNoise noise(seed);
        SSliced oneByOne(90);
        std::map<uint32_t, CSlice> model;
        std::vector<CSlice> slices(120);
        for (CSlice& slice : slices) {
            slice =
                MakeSlice(static_cast<uint32_t>(noise.Within(-3, 99)), noise.Within(1, 3),
                          static_cast<int16_t>(noise.Within(-100, 100)), noise.Within(0, 1) == 1);
            oneByOne.fSequence.InsertSlice(slice);
            CSlice& kept = model.try_emplace(slice.GetPosition(), slice).first->second;
            kept.SetLevel(std::max(kept.GetLevel(), slice.GetLevel()));
            if (kept.GetKind() == kSliceKind_Hidden || slice.GetKind() == kSliceKind_Forced) {
                kept.SetKind(slice.GetKind());
            }
        }
        SSliced batches(90, {slices.begin(), slices.begin() + 60});
        batches.fSequence.InsertSlices({slices.begin() + 60, slices.end()});
        model.erase(model.lower_bound(90), model.end());
        const auto& found = oneByOne.fSequence.GetSlices();
        ASSERT_TRUE(std::equal(found.begin(), found.end(), model.begin(), model.end(),
                               [](const CSlice& a, const auto& b) { return a == b.second; }));
        ASSERT_EQ(batches.fSequence.GetSlices(), found);
    }
}

TEST(SliceSequence, ActiveSlicesReachToTheNextActiveOne) {
    SSliced sliced(1000, {MakeSlice(10, kSliceKind_Hidden), MakeSlice(100),
                          MakeSlice(150, kSliceKind_Level, 5), MakeSlice(300)});
    sliced.fSequence.UpdateSliceLengths();
    EXPECT_EQ(sliced.Lengths(), (V{1, 200, 1, 700}));
    sliced.fSequence.SetSensitivity(99);
    EXPECT_EQ(sliced.Lengths(), (V{1, 50, 150, 700}));
    sliced.fSequence.RemoveSliceAt(MakeSlice(101));
    sliced.fSequence.RemoveSliceAt(MakeSlice(301));
    sliced.fSequence.InsertSliceAndUpdate(MakeSlice(999));
    EXPECT_EQ(sliced.Lengths(), (V{1, 200, 699, 1}));
}

// In silence the level is 0.9 to the number of windows, and the first of them has 1024 frames, the
// others 128. At a gate of 500 the limit is 0.002 to the power of 0.4995, which is 0.04486: the
// 30th window goes under it.
TEST(SliceSequence, GateEndsASliceWhereTheSoundHasDiedAway) {
    SSliced sliced(20000, {MakeSlice(0), MakeSlice(10000), MakeSlice(10500)});
    sliced.fSample->CreatePreview();
    sliced.fSequence.SetGateLevel(0);
    EXPECT_EQ(sliced.Lengths(), (V{10000, 500, 9500}));
    sliced.fSequence.SetGateLevel(999);
    EXPECT_EQ(sliced.Lengths(), (V{1024, 500, 1024}));
    sliced.fSequence.SetGateLevel(500);
    EXPECT_EQ(sliced.Lengths(), (V{4736, 500, 4736}));
    // A click of 0.5 at frame 3200 is seen by the entries from 3072 on, so by the 17th and 18th
    // window of 128 frames. The 17th lifts the level, and from the 18th on it takes 23 to fall
    // again.
    sliced.fSample->Set16BitSample(3200, 16384, 1);
    sliced.fSample->CreatePreview();
    sliced.fSequence.SetGateLevel(500);
    EXPECT_EQ(sliced.Lengths()[0], 1024U + 17 * 128 + 23 * 128);
}

TEST(SliceSequence, PeakLevelWrapsIn16Bits) {
    // The level, times 32768, of one entry with these minima and maxima.
    const auto peak = [](const std::vector<int16_t>& values) {
        const auto sample = CreateWaveSample(44100, 64, values.size() == 4, 16);
        for (size_t i = 0; i < 32 * values.size(); ++i) {
            sample->Set16BitSample(static_cast<int32_t>(i % 64), values[i / 64 * 2 + i % 2],
                                   i < 64 ? 1 : 2);
        }
        EXPECT_EQ(GetPeakLevel(*sample, 0, 64), 0.0F); // no preview yet
        sample->CreatePreview();
        EXPECT_EQ(GetPeakLevel(*sample, 0, 63), 0.0F);
        EXPECT_EQ(GetPeakLevel(*sample, 1, 5000), GetPeakLevel(*sample, 0, 64));
        return GetPeakLevel(*sample, 0, 64) * 32768.0F;
    };
    using Levels = std::vector<int16_t>;
    for (const auto& [values, level] : {std::pair(Levels{-300, 200}, 300.0F),
                                        {{-200, 300}, 300.0F},
                                        {{-32768, 100}, 100.0F},
                                        {{10000, 9000, -10000, -9000}, 0.0F},
                                        {{30000, 30000, 30000, 30000}, 5536.0F},
                                        {{-100, 101, -100, 100}, 1.0F},
                                        {{-100, 100, -100, 100}, 200.0F}}) {
        EXPECT_EQ(peak(values), level); // the last one is a tie: the minimum
    }
}

TEST(SliceSequence, FindsNearestAndSnaps) {
    const CSlice hidden = MakeSlice(201, kSliceKind_Hidden, 3);
    SSliced sliced(1000, {MakeSlice(101), hidden, MakeSlice(301), MakeSlice(701)});
    CSlice slice;
    EXPECT_TRUE(sliced.fSequence.HasSliceAt(201) && sliced.fSequence.FindSliceAt(201, slice));
    EXPECT_FALSE(sliced.fSequence.HasSliceAt(202) || sliced.fSequence.FindSliceAt(202, slice));
    EXPECT_FALSE(SSliced(1000).fSequence.FindNearest(5, slice));
    EXPECT_EQ(slice, hidden);
    EXPECT_EQ(SSliced(1000).fSequence.SnapToSlice(123, 1000), 123U);
    // A frame, the nearest slice, the nearest active one, and where the frame snaps to.
    for (const V& row :
         {V{50, 101, 101, 0}, V{51, 101, 101, 101}, V{151, 101, 101, 101}, V{201, 201, 101, 101},
          V{202, 201, 301, 301}, V{850, 701, 701, 701}, V{851, 701, 701, 1000}}) {
        EXPECT_TRUE(sliced.fSequence.FindNearest(row[0], slice));
        EXPECT_EQ(slice.GetPosition(), row[1]);
        EXPECT_TRUE(sliced.fSequence.FindNearestActive(row[0], slice));
        EXPECT_EQ(slice.GetPosition(), row[2]);
        EXPECT_EQ(sliced.fSequence.SnapToSlice(row[0], 1000), row[3]);
    }
}

TEST(SliceSequence, LeadInIsAShortStart) {
    for (const uint32_t first : {0U, 1U, 3999U, 4000U}) {
        uint32_t leadIn = 5;
        EXPECT_EQ(SSliced(9000, {MakeSlice(first)}).fSequence.GetLeadIn(leadIn), first % 4000 > 0);
        EXPECT_EQ(leadIn, first % 4000);
    }
}

} // namespace
} // namespace NSLOPDLL

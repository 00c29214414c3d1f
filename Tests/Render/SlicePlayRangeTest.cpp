#include "LoopLibrary/Render/BuildSlicePlayRanges.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace NSLOPDLL {
namespace {

using CSpans = std::vector<std::pair<int32_t, int32_t>>;

struct CCase {
    const char* fName;
    int32_t fLoopStart;
    int32_t fLoopEnd;
    std::vector<uint32_t> fSlices;
    CSpans fExpected;
};

TEST(SlicePlayRanges, LoopPointsCutRanges) {
    const CCase cases[] = {
        {"no slice, loop inside", 100, 900, {}, {{0, 100}, {100, 900}, {900, 1000}}},
        {"no slice, loop over all", 0, 1000, {}, {{0, 1000}}},
        {"no slice, loop from the start", 0, 900, {}, {{0, 900}, {900, 1000}}},
        {"plain", 0, 1000, {0, 300}, {{0, 300}, {300, 1000}}},
        {"lead-in", 0, 1000, {200, 300}, {{0, 200}, {200, 300}, {300, 1000}}},
        {"lead-in over both points", 10, 20, {200}, {{0, 10}, {10, 20}, {20, 200}, {200, 1000}}},
        {"lead-in up to the loop", 200, 1000, {200}, {{0, 200}, {200, 1000}}},
        {"slice over the start", 100, 1000, {0, 300}, {{0, 100}, {100, 300}, {300, 1000}}},
        {"slice over the end", 0, 600, {0, 300}, {{0, 300}, {300, 600}, {600, 1000}}},
        {"slice over both", 100, 600, {0}, {{0, 100}, {100, 600}, {600, 1000}}},
        {"empty loop", 500, 500, {0}, {{0, 500}, {500, 500}, {500, 1000}}},
    };
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    for (const CCase& c : cases) {
        sample->SetLoop(2, c.fLoopStart, c.fLoopEnd);
        CSliceSequence sequence(sample.get());
        for (const uint32_t position : c.fSlices) {
            CSlice slice;
            slice.SetPosition(position);
            slice.SetKind(kSliceKind_Forced);
            sequence.InsertSliceAndUpdate(slice);
        }
        for (const bool synced : {false, true}) {
            CSpans spans;
            const auto ranges = BuildSlicePlayRanges(*sample, sequence, true, synced);
            for (const auto& range : *ranges) {
                spans.emplace_back(range.fStart, range.fEnd);
                EXPECT_EQ(range.fTailStart, range.fStart);
                EXPECT_EQ(range.fTailEnd, range.fEnd);
                EXPECT_EQ(range.fTailGain, 1.0F);
            }
            EXPECT_EQ(spans, c.fExpected) << c.fName;
        }
    }
}

// Two slices of 300 sounding frames each, the first one muted or ending before a loop point.
TEST(SlicePlayRanges, SyncedRangesFollowLengthsAndMutes) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    const struct {
        const char* fName;
        int32_t fLoopStart;
        int32_t fLoopEnd;
        bool fMuted;
        bool fDropMuted;
        bool fSynced;
        CSpans fExpected;
    } cases[] = {
        {"gated", 0, 1000, false, false, true, {{0, 300}, {500, 800}}},
        {"unsynced", 0, 1000, false, false, false, {{0, 500}, {500, 1000}}},
        {"muted plays unless dropped", 0, 1000, true, false, true, {{0, 300}, {500, 800}}},
        {"muted plays when unsynced", 0, 1000, true, true, false, {{0, 500}, {500, 1000}}},
        {"dropped", 0, 1000, true, true, true, {{500, 800}}},
        {"dropped over the start", 100, 1000, true, true, true, {{500, 800}}},
        {"over before the start", 400, 1000, false, false, true, {{0, 300}, {500, 800}}},
        {"cut at the start", 200, 1000, false, false, true, {{0, 200}, {200, 300}, {500, 800}}},
        {"over before the end", 0, 400, false, false, true, {{0, 300}, {500, 800}}},
        {"over at the end", 0, 300, false, false, true, {{0, 300}, {500, 800}}},
        {"cut at the end", 0, 100, false, false, true, {{0, 100}, {100, 300}, {500, 800}}},
        {"over between both", 200, 400, false, false, true, {{0, 200}, {200, 300}, {500, 800}}},
    };
    for (const auto& c : cases) {
        sample->SetLoop(2, c.fLoopStart, c.fLoopEnd);
        CSliceSequence sequence(sample.get());
        for (const uint32_t position : {0U, 500U}) {
            CSlice slice;
            slice.SetPosition(position);
            slice.SetKind(kSliceKind_Forced);
            slice.SetLength(300);
            slice.SetMuted(c.fMuted && position == 0);
            sequence.InsertSlice(slice);
        }
        CSpans spans;
        const auto ranges = BuildSlicePlayRanges(*sample, sequence, c.fDropMuted, c.fSynced);
        for (const auto& range : *ranges) {
            spans.emplace_back(range.fStart, range.fEnd);
        }
        EXPECT_EQ(spans, c.fExpected) << c.fName;
    }
}

// At 44100 the tail's end is looked for from 401 to 800 of a range of 1200 frames. The search for
// its start begins half way from the tail's end to the range's start.
TEST(FindTail, TakesTheStrongestFrames) {
    const struct {
        const char* fName;
        int32_t fLength;
        std::vector<std::pair<int32_t, int16_t>> fPeaks;
        CSlicePlayRange fExpected;
    } cases[] = {
        {"too short", 1199, {{700, 100}}, {0, 1199, 0, 1199, 1.0F}},
        {"silence", 1200, {}, {0, 1200, 400, 800, 1.0F}},
        {"two peaks", 1200, {{700, -300}, {100, 200}}, {0, 1200, 100, 700, 1.5F}},
        {"limit of the gain", 1200, {{700, 300}, {100, 29}}, {0, 1200, 100, 700, 10.0F}},
        {"no lower peak", 1200, {{700, 300}}, {0, 1200, 350, 700, 1.0F}},
        {"the latest of equals",
         1200,
         {{600, 5}, {700, -5}, {50, 5}, {60, 5}},
         {0, 1200, 60, 700, 1.0F}},
        {"first frames of both searches", 1200, {{800, 9}, {400, 9}}, {0, 1200, 400, 800, 1.0F}},
        {"last frames of both searches", 1200, {{401, 9}, {0, 9}}, {0, 1200, 0, 401, 1.0F}},
        {"outside of the upper search", 1200, {{801, 9}, {400, 8}}, {0, 1200, 400, 800, 0.0F}},
        {"below the lower search", 2400, {{2000, 9}, {600, 8}}, {0, 2400, 1000, 2000, 1.0F}},
        {"at most 20000 back",
         60000,
         {{59600, 8}, {39600, 4}, {39601, 99}},
         {0, 60000, 39600, 59600, 2.0F}},
    };
    for (const auto& c : cases) {
        const auto sample = CreateWaveSample(44100, 60000, true, 16);
        for (const auto& [frame, value] : c.fPeaks) {
            sample->Set16BitSample(frame, value, 1);
        }
        sample->Set16BitSample(650, 30000, 2); // only the left channel counts
        CSlicePlayRange range;
        range.fEnd = c.fLength;
        FindTail(*sample, range);
        EXPECT_EQ(range, c.fExpected) << c.fName;
    }
    for (const uint32_t rate : {1U, 110U}) {
        CSlicePlayRange range;
        range.fEnd = 500;
        FindTail(*CreateWaveSample(rate, 500, false, 16), range);
        EXPECT_EQ(range, (CSlicePlayRange{0, 500, 0, 500, 1.0F}));
    }
}

} // namespace
} // namespace NSLOPDLL

#include "LoopLibrary/Render/Slices/BuildSlicePlayRanges.h"
#include "Tests/Render/RenderTestTools.h"

#include <string>

namespace NSLOPDLL {
namespace {

struct CRangeFlags {
    bool fMuted = false; // the first slice
    bool fDropMuted = true;
    bool fSynced = true;
};

// The ranges of a silent sample of 1000 frames with a loop, as "0-100 100-1000". The slices sound
// for `length` frames, or with a length of 0 up to the next one; a hidden one plays no part.
std::string Ranges(int32_t loopStart, int32_t loopEnd, const std::vector<uint32_t>& positions,
                   uint32_t length = 0, CRangeFlags flags = {}) {
    const auto sample = CreateWaveSample(44100, 1000, false, 16);
    sample->SetLoop(2, loopStart, loopEnd);
    CSliceSequence sequence(sample.get());
    sequence.InsertSlice(MakeSlice(50, kSliceKind_Hidden));
    for (const uint32_t position : positions) {
        const bool muted = flags.fMuted && position == positions.front();
        CSlice slice = MakeSlice(position, kSliceKind_Forced, 0, muted);
        slice.SetLength(length);
        sequence.InsertSlice(slice);
    }
    if (length == 0) {
        sequence.UpdateSliceLengths();
    }
    const auto ranges = BuildSlicePlayRanges(*sample, sequence, flags.fDropMuted, flags.fSynced);
    std::string text;
    for (const CSlicePlayRange& range : *ranges) {
        text += (text.empty() ? "" : " ") + std::to_string(range.fStart) + "-" +
                std::to_string(range.fEnd);
    }
    return text;
}

TEST(SlicePlayRanges, LoopPointsCutRanges) {
    EXPECT_EQ(Ranges(100, 900, {}), "0-100 100-900 900-1000");
    EXPECT_EQ(Ranges(0, 900, {}), "0-900 900-1000");
    EXPECT_EQ(Ranges(10, 20, {200}), "0-10 10-20 20-200 200-1000");
    EXPECT_EQ(Ranges(200, 1000, {200}), "0-200 200-1000");
    EXPECT_EQ(Ranges(100, 600, {0}), "0-100 100-600 600-1000");
    EXPECT_EQ(Ranges(500, 500, {0}), "0-500 500-500 500-1000");
}

TEST(SlicePlayRanges, SyncedRangesFollowLengthsAndMutes) {
    const std::vector<uint32_t> two = {0, 500};
    EXPECT_EQ(Ranges(0, 1000, two, 300), "0-300 500-800");
    EXPECT_EQ(Ranges(0, 1000, two, 300, {true, true, false}), "0-500 500-1000");
    EXPECT_EQ(Ranges(0, 1000, two, 300, {true, false, true}), "0-300 500-800");
    EXPECT_EQ(Ranges(400, 1000, two, 300), "0-300 500-800"); // over before the loop
    EXPECT_EQ(Ranges(100, 200, two, 300), "0-100 100-200 200-300 500-800");
    EXPECT_EQ(Ranges(200, 400, two, 300), "0-200 200-300 500-800");
}

// At 44100 the tail's end is looked for from 401 to 800 of a range of 1200 frames. The search for
// its start begins half way from the tail's end to the range's start.
TEST(FindTail, TakesTheStrongestFrames) {
    const struct {
        int32_t fLength;
        std::vector<std::pair<int32_t, int16_t>> fPeaks;
        int32_t fStart, fEnd;
        float fGain;
        uint32_t fRate = 44100;
    } cases[] = {
        {1199, {{700, 100}}, 0, 1199, 1.0F}, // too short
        {1200, {}, 400, 800, 1.0F},
        {1200, {{700, -300}, {100, 200}}, 100, 700, 1.5F},
        {1200, {{700, 300}, {100, 29}}, 100, 700, 10.0F},
        {1200, {{700, 300}}, 350, 700, 1.0F},
        // The latest of equals, and the first and last frames of both searches.
        {1200, {{600, 5}, {700, -5}, {50, 5}, {60, 5}}, 60, 700, 1.0F},
        {1200, {{800, 9}, {400, 9}}, 400, 800, 1.0F},
        {1200, {{401, 9}, {0, 9}}, 0, 401, 1.0F},
        {1200, {{801, 9}, {400, 8}}, 400, 800, 0.0F},
        {2400, {{2000, 9}, {600, 8}}, 1000, 2000, 1.0F},
        {60000, {{59600, 8}, {39600, 4}, {39601, 99}}, 39600, 59600, 2.0F}, // at most 20000 back
        {500, {{100, 9}}, 0, 500, 1.0F, 110},                               // no span to search
    };
    for (const auto& c : cases) {
        const auto sample = CreateWaveSample(c.fRate, 60000, true, 16);
        for (const auto& [frame, value] : c.fPeaks) {
            sample->Set16BitSample(frame, value, 1);
        }
        sample->Set16BitSample(650, 30000, 2); // only the left channel counts
        CSlicePlayRange range;
        range.fEnd = c.fLength;
        FindTail(*sample, range);
        EXPECT_EQ(range, (CSlicePlayRange{0, c.fLength, c.fStart, c.fEnd, c.fGain}));
    }
}

} // namespace
} // namespace NSLOPDLL

#include "Tests/Render/Sequencer/SequencerTestKit.h"

#include <cmath>

namespace NSLOPDLL {
namespace {

constexpr int32_t kFrameCount = 20000;

struct SLoopCase {
    const char* fName;
    std::vector<int32_t> fStarts;
    int32_t fLoopStart;
    int32_t fLoopEnd;
    size_t fFirst; // entry that the play starts on
};

const SLoopCase kCases[] = {
    {"loop over all", {0, 3000, 7001, 12345}, 0, 20000, 0},
    {"start inside the loop", {0, 3000, 7001, 12345}, 0, 20000, 2},
    {"first slice behind the loop start", {1000, 9000}, 0, 20000, 0},
    {"lead-in", {0, 700, 2000, 8000, 9999, 18000}, 2000, 18000, 0},
    {"lead-in of crowded slices", {0, 10, 20, 30, 2000, 8000}, 2000, 20000, 1},
    {"behind the loop end", {0, 2000, 8000, 15000, 17000}, 2000, 15000, 3},
    {"single range", {0}, 0, 20000, 0},
    {"loop under a block", {0, 4000, 4005, 19994}, 4000, 4005, 1},
    {"ranges under a block", {0, 5, 10, 12, 40, 41, 5000, 5001, 9000}, 0, 20000, 0},
};

// When ranges are due, in closed form: the clock of an entry is the rounded time of its position,
// pushed back so far that the entries before it have a block each; a way round the loop or the
// sample lasts as long as the source frames that it passes.
SamplerActions ModelTriggers(const SLoopCase& loop, double tempoRatio, int32_t outputRate,
                             int32_t blocks) {
    const std::vector<int32_t>& at = loop.fStarts;
    const int32_t start = loop.fLoopStart;
    const int32_t end = loop.fLoopEnd;
    const auto frames = [&](int64_t source) {
        const double scaled = tempoRatio * static_cast<double>(source);
        return static_cast<int64_t>(std::floor(outputRate * scaled / 44100 + 0.5));
    };
    const auto rounded = [](int64_t time) { return (time + 32) / 64 * 64; };
    const auto loopEntry =
        static_cast<size_t>(std::lower_bound(at.begin(), at.end(), start) - at.begin());
    const auto clock = [&](size_t entry) {
        int64_t time = -64;
        for (size_t i = at[entry] < start ? 0 : loopEntry; i <= entry; ++i) {
            time = std::max(rounded(frames(at[i] - (at[entry] < start ? 0 : start))), time + 64);
        }
        return time;
    };
    const SliceTable table = MakeTable(at, kFrameCount);
    SamplerActions actions;
    // The block that takes the start command counts down already.
    int64_t time = -64;
    for (size_t entry = loop.fFirst; time / 64 < blocks;) {
        actions.emplace(std::max<int64_t>(time / 64, 0),
                        [range = table[entry]](CTesselSampler& s) { s.StartRange(range); });
        const bool isBehind = at[entry] >= end;
        size_t next = entry + 1;
        if (next == at.size() || (!isBehind && at[next] >= end)) {
            next = isBehind ? 0 : loopEntry;
        }
        if (next > entry) {
            const bool entersLoop = at[entry] < start && at[next] >= start;
            const int64_t due = entersLoop ? rounded(frames(at[next])) : clock(next);
            time += std::max(due - clock(entry), int64_t{64});
        } else {
            const int64_t way =
                isBehind
                    ? frames(kFrameCount) + frames(at[next]) - frames(at[entry])
                    : frames(end - start) + frames(at[next] - start) - frames(at[entry] - start);
            time += std::max(rounded(way), int64_t{64});
        }
        entry = next;
    }
    return actions;
}

TEST(CTesselSequencerTrigger, RangesStartWhenThePlainModelSaysWhateverTheBatch) {
    constexpr int32_t kBlocks = 500;
    const int32_t batches[] = {640, 1, 7, 63, 64, 65, 1000};
    size_t run = 0;
    const auto sample = MakeNoiseSample(44100, kFrameCount, false, 16);
    for (const SLoopCase& loop : kCases) {
        for (const int32_t tempo : {20000, 99999, 165375, 450000}) {
            for (const int32_t rate : {11025, 44100, 48000}) {
                CTesselSequencer sequencer(sample.get());
                sequencer.SetBeats(1);
                sequencer.SetTempo(tempo);
                sequencer.SetTempoSync(true);
                sequencer.SetOutputRate(rate);
                sequencer.SetSliceTable(
                    std::make_unique<SliceTable>(MakeTable(loop.fStarts, kFrameCount)));
                StandOn(sequencer, loop.fStarts[loop.fFirst], loop.fLoopStart, loop.fLoopEnd);
                const double tempoRatio = static_cast<double>(sequencer.GetLoopTempo()) / tempo;
                const auto expected = SamplerAudio(sequencer, kBlocks,
                                                   ModelTriggers(loop, tempoRatio, rate, kBlocks));
                sequencer.Start();
                EXPECT_TRUE(RenderBlocks(sequencer, kBlocks, batches[run++ % 7]) == expected)
                    << loop.fName << ", tempo " << tempo << ", rate " << rate;
            }
        }
    }
}

TEST(CTesselSequencerTrigger, TempoChangeActsOnThePlannedTrigger) {
    SBarLoop loop;
    CTesselSequencer& sequencer = loop.fSequencer;
    const auto expectBlocks = [&](int32_t toNext, int32_t lastGap, int32_t currentTime) {
        const CTriggerPlan fields = Plan(sequencer);
        EXPECT_EQ(fields.fFramesToNext, toNext * kBlockFrames);
        EXPECT_EQ(fields.fLastGap, lastGap * kBlockFrames);
        EXPECT_EQ(fields.fCurrentTime, currentTime * kBlockFrames);
    };
    sequencer.Start();
    RenderBlocks(sequencer, 100);
    expectBlocks(245, 345, 0); // 22050 frames are 344.5 blocks
    sequencer.SetTempo(240000);
    RenderBlocks(sequencer, 1);
    expectBlocks(123 - 1, 173, 0); // halves of odd numbers round up
    RenderBlocks(sequencer, 122);
    expectBlocks(345 - 173, 345 - 173, 173); // the third beat is due as the second one was
    sequencer.SetLoopRange(100, 100);        // has no tempo, which leaves the plan alone
    RenderBlocks(sequencer, 1);
    expectBlocks(172 - 1, 172, 173);
    sequencer.SetLoopRange(0, kBarFrames / 2); // has twice the tempo
    RenderBlocks(sequencer, 1);
    expectBlocks(2 * 171 - 1, 2 * 172, 2 * 173);
}

TEST(CTesselSequencerTrigger, TimesBeyond32BitsSaturate) {
    const auto sample = CreateWaveSample(11025, 1000000, false, 16);
    CTesselSequencer sequencer(sample.get());
    sequencer.SetBars(9999);
    sequencer.SetTempo(20000);
    sequencer.SetTempoSync(true);
    sequencer.SetSliceTable(std::make_unique<SliceTable>(MakeTable({0, 500000, 900000}, 1000000)));
    sequencer.SetOutputRate(1000000);
    // 100000 * 999999 / 20000 * 1000000 / 11025 is 453514285.7; five times that is too much.
    EXPECT_EQ(sequencer.FramesToOutput(100000), 453514286);
    EXPECT_EQ(sequencer.FramesToOutput(500000), INT32_MAX);
    sequencer.Start();
    RenderBlocks(sequencer, 10);
    EXPECT_EQ(Plan(sequencer).fFramesToNext, INT32_MAX - 640);
    sequencer.SetTempo(0); // nobody should, but no render thread may fall over it
    RenderBlocks(sequencer, 10);
    EXPECT_EQ(Plan(sequencer).fFramesToNext, INT32_MAX - 1280);
    EXPECT_EQ(sequencer.FramesToOutput(0), 0); // not a number, before it is an integer
}

} // namespace
} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sequencer/CTriggerClock.h"
#include "Tests/Render/Sequencer/SequencerTestKit.h"

#include <cmath>

namespace NSLOPDLL {
namespace {

constexpr int32_t kFrameCount = 20000;

struct SLoopCase {
    const char* fName;
    std::vector<int32_t> fStarts;
    int32_t fLoopStart, fLoopEnd;
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

// Starts of ranges by the blocks at whose heads they begin.
using Triggers = std::vector<std::pair<int64_t, int32_t>>;

// When ranges are due, in closed form: the clock of an entry is the rounded time of its position,
// pushed back so far that the entries before it have a block each; a way round the loop or the
// sample lasts as long as the source frames that it passes.
Triggers ModelTriggers(const SLoopCase& loop, double tempoRatio, int32_t outputRate,
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
    Triggers triggers;
    // The block that takes the start command counts down already.
    int64_t time = -64;
    for (size_t entry = loop.fFirst; time / 64 < blocks;) {
        triggers.emplace_back(std::max<int64_t>(time / 64, 0), at[entry]);
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
    return triggers;
}

// A clock with its table and settings: at first the bar of SBarLoop at 100. There a beat of 22050
// is 26460 output frames, and the beats are due at 0, 413 (413.4), 827 (826.9) and 1240 blocks.
struct SClock {
    SliceTable fTable = MakeTable({0, 22050, 44100, 66150}, kBarFrames);
    CClockSettings fNow{100000, 120000, true, 44100, 44100, 0, kBarFrames, kBarFrames};
    CTriggerClock fClock;

    void Start(int32_t start) {
        fClock.Start(start, CTriggerClock::EntryTime(start, fTable, fNow), fTable, fNow);
    }
    Triggers Run(int64_t blocks) {
        Triggers triggers;
        for (int64_t block = 0; block < blocks; ++block) {
            fClock.FollowTempo(fNow);
            if (fClock.CountBlock()) {
                const CTriggered triggered = fClock.Trigger(fTable, fNow);
                EXPECT_FALSE(triggered.fIsFreeRun);
                if (triggered.fRange != nullptr) {
                    triggers.emplace_back(block, triggered.fRange->fStart);
                }
            }
        }
        return triggers;
    }
    void ExpectBlocks(int32_t toNext, int32_t lastGap, int32_t currentTime) const {
        const CTriggerPlan& plan = fClock.GetPlan();
        EXPECT_EQ(plan.fFramesToNext, toNext * kBlockFrames);
        EXPECT_EQ(plan.fLastGap, lastGap * kBlockFrames);
        EXPECT_EQ(plan.fCurrentTime, currentTime * kBlockFrames);
    }
};

TEST(CTriggerClock, RangesStartWhenThePlainModelSays) {
    constexpr int32_t kBlocks = 500;
    constexpr int32_t kLoopTempo = 132300; // a beat in 20000 frames
    for (const SLoopCase& loop : kCases) {
        for (const int32_t tempo : {20000, 99999, 165375, 450000}) {
            for (const int32_t rate : {11025, 44100, 48000}) {
                SClock clock;
                clock.fTable = MakeTable(loop.fStarts, kFrameCount);
                clock.fNow = {tempo, kLoopTempo,      true,          44100,
                              rate,  loop.fLoopStart, loop.fLoopEnd, kFrameCount};
                clock.Start(loop.fStarts[loop.fFirst]);
                Triggers expected =
                    ModelTriggers(loop, static_cast<double>(kLoopTempo) / tempo, rate, kBlocks);
                expected.erase(expected.begin()); // the start itself
                EXPECT_EQ(clock.Run(kBlocks), expected)
                    << loop.fName << ", tempo " << tempo << ", rate " << rate;
            }
        }
    }
}

TEST(CTriggerClock, TempoChangeActsOnThePlannedTrigger) {
    SClock clock;
    clock.fNow.fTempo = 120000;
    clock.Start(0);
    clock.Run(100);
    clock.ExpectBlocks(245, 345, 0); // 22050 frames are 344.5 blocks
    clock.fNow.fTempo = 240000;
    clock.Run(1);
    clock.ExpectBlocks(123 - 1, 173, 0); // halves of odd numbers round up
    clock.Run(122);
    clock.ExpectBlocks(345 - 173, 345 - 173, 173); // the third beat is due as the second one was
    clock.fNow.fLoopTempo = 0; // of a loop without length: leaves the plan alone
    clock.Run(1);
    clock.ExpectBlocks(172 - 1, 172, 173);
    clock.fNow.fLoopTempo = 240000;
    clock.Run(1);
    clock.ExpectBlocks(2 * 171 - 1, 2 * 172, 2 * 173);
}

// 3200 frames on, the next range is 295 blocks (294.5) away.
TEST(CTriggerClock, SyncOnWaitsForTheFreeVoiceToReachARange) {
    const struct {
        int32_t fFirst;               // beat that the free voice starts on
        int32_t fLoopStart, fLoopEnd; // in beats
        int32_t fNext;                // range that it reaches
        int32_t fGap;                 // blocks from there to the range after it
    } cases[] = {
        {0, 0, 4, 1, 827 - 413},
        {3, 0, 4, 0, 413},
        {3, 1, 4, 1, 413},
        {3, 0, 3, 0, 413}, // behind the loop end: to the end of the sample
    };
    for (const auto& c : cases) {
        SClock clock;
        clock.fNow.fIsSynced = false;
        clock.fNow.fLoopStart = c.fLoopStart * 22050;
        clock.fNow.fLoopEnd = c.fLoopEnd * 22050;
        clock.Start(c.fFirst * 22050);
        EXPECT_TRUE(clock.fClock.IsFree());
        clock.fNow.fIsSynced = true;
        clock.fNow.fTempo = 90000; // a change that came with the sync: noted, and no rescaling
        clock.fClock.PlanIntoSync(c.fFirst * 22050 + 3200, clock.fTable, clock.fNow);
        EXPECT_FALSE(clock.fClock.IsFree());
        SClock stopped = clock;
        clock.Run(1);
        EXPECT_EQ(clock.fClock.GetPlan().fFramesToNext, 294 * kBlockFrames);
        clock.fNow.fTempo = 100000;
        clock.fClock.PlanIntoSync(c.fFirst * 22050 + 3200, clock.fTable, clock.fNow);
        EXPECT_EQ(clock.Run(720),
                  (Triggers{{294, c.fNext * 22050}, {294 + c.fGap, (c.fNext + 1) * 22050}}));
        // A start in between is not a change into sync any more.
        stopped.fNow.fIsSynced = false;
        stopped.Start(0);
        EXPECT_TRUE(stopped.fClock.IsFree());
        EXPECT_EQ(stopped.Run(2000), Triggers());
    }
}

// Each is played to the block before its second trigger and then has its loop moved. The loops are
// whole beats, so that their own tempo stays.
TEST(CTriggerClock, MovedLoopsTakeAnotherNextRange) {
    const struct {
        int32_t fEnd;               // of the loop from 0, before the move
        int32_t fNewStart, fNewEnd; // and after it
        int32_t fFirst;             // where the play starts
        int32_t fCurrent, fNext;    // what the second trigger starts and plans
        int32_t fCurrentTime;       // its time in blocks
    } moves[] = {
        // The range that was next became the loop end: round again.
        {88200, 0, 22050, 0, 0, 0, 0},
        // The wrap was planned, but the range that plays fell behind the end: on through the table.
        {44100, 0, 22050, 22050, 44100, 66150, 827},
        // The wrap was planned and is none any more; the clock stands at the loop start already.
        {44100, 0, 88200, 22050, 44100, 66150, 0},
        // Times count from the new start.
        {88200, 22050, 88200, 22050, 44100, 66150, 413},
    };
    for (const auto& move : moves) {
        SClock clock;
        clock.fNow.fLoopEnd = move.fEnd;
        clock.Start(move.fFirst);
        clock.Run(clock.fClock.GetPlan().fFramesToNext / kBlockFrames - 1);
        EXPECT_EQ(clock.fClock.GetPlan().fCurrentStart, move.fFirst);
        clock.fNow.fLoopStart = move.fNewStart;
        clock.fNow.fLoopEnd = move.fNewEnd;
        clock.Run(1);
        const CTriggerPlan& plan = clock.fClock.GetPlan();
        EXPECT_EQ(plan.fCurrentStart, move.fCurrent);
        EXPECT_EQ(plan.fNextStart, move.fNext);
        EXPECT_EQ(plan.fCurrentTime, move.fCurrentTime * kBlockFrames);
    }
}

TEST(CTriggerClock, TimesBeyond32BitsSaturate) {
    SClock clock;
    clock.fTable = MakeTable({0, 500000, 900000}, 1000000);
    clock.fNow = {20000, 999999, true, 11025, 1000000, 0, 1000000, 1000000};
    // 100000 * 999999 / 20000 * 1000000 / 11025 is 453514285.7; five times that is too much.
    EXPECT_EQ(clock.fNow.OutputTime(100000), 453514286);
    EXPECT_EQ(clock.fNow.OutputTime(500000), INT32_MAX);
    clock.Start(0);
    clock.Run(10);
    EXPECT_EQ(clock.fClock.GetPlan().fFramesToNext, INT32_MAX - 640);
    clock.fNow.fTempo = 0; // nobody should, but no render thread may fall over it
    clock.Run(10);
    EXPECT_EQ(clock.fClock.GetPlan().fFramesToNext, INT32_MAX - 1280);
    EXPECT_EQ(clock.fNow.OutputTime(0), 0); // not a number, before it is an integer
}

} // namespace
} // namespace NSLOPDLL

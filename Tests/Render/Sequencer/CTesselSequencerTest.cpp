#include "Tests/Render/Sequencer/SequencerTestKit.h"

#include <future>
#include <set>
#include <stdexcept>

namespace NSLOPDLL {

struct SSequencerMutexes : CTesselSequencer {
    static auto& State(CTesselSequencer& sequencer) {
        return sequencer.*(&SSequencerMutexes::fStateMutex);
    }
    static auto& Table(CTesselSequencer& sequencer) {
        return sequencer.*(&SSequencerMutexes::fTableMutex);
    }
};

namespace {

// The render goes to another thread, since the mutexes let their holder in again.
std::vector<float> RenderAgainst(NSSupport::CPlatformMutex& mutex, CTesselSequencer& sequencer,
                                 int32_t blocks) {
    const NSSupport::CMutexLock lock(mutex);
    return std::async(std::launch::async, [&] { return RenderBlocks(sequencer, blocks); }).get();
}

TEST(CTesselSequencer, LostMutexesDelayCommandsAndTriggers) {
    const std::vector<float> silence(size_t{2} * kBlockFrames, 0.0f);
    SBarLoop loop;
    CTesselSequencer& sequencer = loop.fSequencer;
    auto& state = SSequencerMutexes::State(sequencer);
    auto& table = SSequencerMutexes::Table(sequencer);
    sequencer.StartOneShot(1);
    EXPECT_EQ(RenderAgainst(table, sequencer, 2), silence);
    sequencer.Start();
    EXPECT_EQ(RenderAgainst(table, sequencer, 2), silence);
    EXPECT_EQ(RenderAgainst(state, sequencer, 2), silence);
    RenderBlocks(sequencer, 340);
    // Blocks without the state do not count toward the trigger; without the table they do.
    RenderAgainst(state, sequencer, 100);
    EXPECT_EQ(Plan(sequencer).fFramesToNext, 5 * kBlockFrames);
    RenderAgainst(table, sequencer, 8);
    EXPECT_EQ(Plan(sequencer).fFramesToNext, -3 * kBlockFrames);
    RenderBlocks(sequencer, 1);
    EXPECT_EQ(Plan(sequencer).fFramesToNext, (689 - 345) * kBlockFrames);
    EXPECT_EQ(Plan(sequencer).fCurrentStart, 22050);
}

// The time of a start is worked out when it is asked for, by all that holds when it is taken. The
// ranges before it are crowded and push it back.
TEST(CTesselSequencer, ChangesReachAStartThatWaits) {
    const std::vector<int32_t> starts = {0, 10, 20, 30, 40, 50, 1000, 1010, 1020, 1030};
    const std::function<void(SBarLoop&)> changes[] = {
        [](SBarLoop&) {},
        [](SBarLoop& s) { s.fSequencer.SetTempo(20000); },
        [](SBarLoop& s) { s.fSequencer.SetOutputRate(96000); },
        [](SBarLoop& s) { s.fSequencer.SetBars(3); },
        [](SBarLoop& s) { s.fSequencer.SetBeats(2); },
        [](SBarLoop& s) { s.fSequencer.SetTempoSync(false); },
        [](SBarLoop& s) { s.fSequencer.SetTimeSignature(3, 4); },
        [](SBarLoop& s) { s.fSequencer.SetLoopRange(0, 22050); },
        [](SBarLoop& s) {
            s.SetTable(MakeTable({0, 1000, 1020, 1030}, kBarFrames));
        },
    };
    std::set<int32_t> times;
    for (const auto& change : changes) {
        SBarLoop before(120000, true, starts);
        SBarLoop after(120000, true, starts);
        for (SBarLoop* loop : {&before, &after}) {
            loop->fSequencer.SetBars(1);
            loop->fSequencer.SetLoopRange(1030, kBarFrames);
            loop->fSequencer.MoveToLoopStart();
            loop->fSequencer.SetLoopRange(0, kBarFrames);
        }
        change(before);
        before.fSequencer.Start();
        after.fSequencer.Start();
        change(after);
        times.insert(after.fSequencer.GetPlayFields().fCommandTime);
        EXPECT_EQ(RenderBlocks(before.fSequencer, 900), RenderBlocks(after.fSequencer, 900));
        EXPECT_EQ(Plan(before.fSequencer).fCurrentTime, Plan(after.fSequencer).fCurrentTime);
    }
    EXPECT_EQ(times.size(), std::size(changes)) << "each matters";
}

TEST(CTesselSequencer, OneShotPlaysItsRangeAndEndsTheLoop) {
    for (const bool synced : {true, false}) {
        SBarLoop loop(120000, synced);
        CTesselSequencer& sequencer = loop.fSequencer;
        sequencer.Start();
        sequencer.StartOneShot(2);
        const SamplerAction once = [](CTesselSampler& s) { s.StartFreeRange(44100, 66150); };
        const SamplerActions actions = {{0, synced ? Range(loop.fTable[2]) : once}};
        EXPECT_EQ(RenderBlocks(sequencer, 300), SamplerAudio(sequencer, 300, actions));
        EXPECT_EQ(sequencer.GetEqualizer().GetRunFlag(), synced);
        RenderBlocks(sequencer, 900);
        EXPECT_EQ(sequencer.GetPlayFields().fPlayState, kPlayState_Idle);
        EXPECT_THROW(sequencer.StartOneShot(4), std::out_of_range);
    }
}

TEST(CTesselSequencer, EmptiedTableRunsDown) {
    for (const bool synced : {true, false}) { // free voices stop going round
        SBarLoop loop(120000, synced);
        loop.fSequencer.Start();
        RenderBlocks(loop.fSequencer, 10);
        loop.fSequencer.SetSliceTable(nullptr);
        for (const int32_t blocks : {6000, 1}) {
            RenderBlocks(loop.fSequencer, blocks);
            EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Idle);
            loop.fSequencer.Start();
        }
    }
}

TEST(CTesselSequencer, LoopWithoutAnEntry) {
    SBarLoop loop;
    loop.fSequencer.SetLoopRange(30000, 40000);
    loop.fSequencer.ResetPosition();
    EXPECT_EQ(Plan(loop.fSequencer).fNextStart, 0);
    loop.fSequencer.MoveToLoopStart(); // to the entry before the one behind the loop end
    EXPECT_EQ(Plan(loop.fSequencer).fNextStart, 22050);
}

TEST(CTesselSequencer, NewRateReachesTheSamplerAtTheNextRender) {
    CDSPTablesCache& cache = CDSPTablesCache::Instance();
    {
        SBarLoop loop;
        loop.fSequencer.SetOutputRate(22051);
        loop.fSequencer.SetOutputRate(1);
        EXPECT_EQ(cache.GetReferenceCount(22051), 0); // no render took it
        EXPECT_EQ(loop.fSequencer.FramesToOutput(44100), 11025);
        EXPECT_EQ(CTesselSequencer(loop.fSequencer).GetSampler().GetOutputRate(), 11025);
        RenderBlocks(loop.fSequencer, 1);
        EXPECT_EQ(loop.fSequencer.GetSampler().GetOutputRate(), 11025);
        EXPECT_EQ(loop.fSequencer.GetEqualizer().GetSampleRate(), 11025);
        EXPECT_EQ(cache.GetReferenceCount(44100), 1); // retired, not yet released
        loop.fSequencer.SetOutputRate(1000001);
        EXPECT_EQ(cache.GetReferenceCount(44100), 0);
    }
    EXPECT_EQ(cache.GetReferenceCount(11025) + cache.GetReferenceCount(1000000), 0);
}

// The bar at 100: the beats are due at 0, 413 and 827 blocks. The block of a start or of a switch
// counts already, and a free voice that is at frame 3200 has 294.5 blocks to go to the second beat.
constexpr int32_t kSlowTempo = 100000;

TEST(CTesselSequencer, SyncChangesOverAtATrigger) {
    for (const bool on : {true, false}) {
        SBarLoop loop(kSlowTempo, !on);
        loop.fSequencer.Start();
        std::vector<float> audio = RenderBlocks(loop.fSequencer, 50);
        loop.fSequencer.SetTempoSync(on);
        const std::vector<float> rest = RenderBlocks(loop.fSequencer, 700);
        audio.insert(audio.end(), rest.begin(), rest.end());
        const SamplerActions onActions = {{0, FreeRun(0)}, {50 + 294, Range(loop.fTable[1])}};
        const SamplerActions offActions = {{0, Range(loop.fTable[0])}, {413 - 1, FreeRun(22050)}};
        EXPECT_EQ(audio, SamplerAudio(loop.fSequencer, 750, on ? onActions : offActions));
        EXPECT_EQ(loop.fSequencer.GetEqualizer().GetRunFlag(), on);
    }
}

TEST(CTesselSequencer, AnyBatchesGiveTheSameSound) {
    for (const int32_t batch : {640, 1, 7, 63, 64, 65, 1000}) {
        SBarLoop loop(kSlowTempo);
        loop.fSequencer.Start();
        const SamplerActions actions = {{0, Range(loop.fTable[0])},
                                        {413 - 1, Range(loop.fTable[1])},
                                        {827 - 1, Range(loop.fTable[2])}};
        EXPECT_EQ(RenderBlocks(loop.fSequencer, 1000, batch),
                  SamplerAudio(loop.fSequencer, 1000, actions));
    }
}

// At half the loop's tempo a beat sounds for half of its time; what follows is its tail.
TEST(CTesselSequencer, PlayFieldsTellOfBodyTailAndStop) {
    SBarLoop loop(60000);
    CTesselSequencer& sequencer = loop.fSequencer;
    const auto expectFields = [&](int32_t state, bool sounding) {
        const CSequencerPlayFields fields = sequencer.GetPlayFields();
        EXPECT_EQ(fields.fPlayState, state);
        EXPECT_EQ(fields.fVoiceSounding, sounding);
        EXPECT_EQ(fields.fPlayPosition == fields.fClock.GetPlan().fNextStart, !sounding);
    };
    sequencer.Start();
    RenderBlocks(sequencer, 300);
    expectFields(kPlayState_Running, true);
    RenderBlocks(sequencer, 100);
    expectFields(kPlayState_Running, false);
    sequencer.MoveToLoopStart(); // leaves a running loop alone
    sequencer.Start();
    RenderBlocks(sequencer, 300);
    EXPECT_EQ(Plan(sequencer).fCurrentStart, 22050);
    EXPECT_EQ(Plan(sequencer).fNextStart, 44100);
    sequencer.RequestStop();
    RenderBlocks(sequencer, 1);
    expectFields(kPlayState_Released, true);
    RenderBlocks(sequencer, 3);
    expectFields(kPlayState_Idle, false);
}

} // namespace
} // namespace NSLOPDLL

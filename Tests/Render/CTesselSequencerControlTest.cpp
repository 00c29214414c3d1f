#include "SequencerTestKit.h"

#include <future>
#include <stdexcept>

namespace NSLOPDLL {

class CTesselSequencerTestAccess {
public:
    static auto& State(CTesselSequencer& sequencer) { return sequencer.fStateMutex; }
    static auto& Table(CTesselSequencer& sequencer) { return sequencer.fTableMutex; }
};

namespace {

// The render goes to another thread, since the mutexes let their holder in again.
std::vector<float> RenderAgainst(NSSupport::CPlatformMutex& mutex, CTesselSequencer& sequencer,
                                 int32_t blocks) {
    const NSSupport::CMutexLock lock(mutex);
    return std::async(std::launch::async, [&] { return RenderBlocks(sequencer, blocks); }).get();
}

TEST(CTesselSequencerControl, LostMutexesDelayCommandsAndTriggers) {
    const std::vector<float> silence(size_t{2} * kBlockFrames, 0.0f);
    SBarLoop loop;
    CTesselSequencer& sequencer = loop.fSequencer;
    auto& state = CTesselSequencerTestAccess::State(sequencer);
    auto& table = CTesselSequencerTestAccess::Table(sequencer);
    sequencer.StartOneShot(1);
    EXPECT_EQ(RenderAgainst(table, sequencer, 2), silence);
    sequencer.Start();
    EXPECT_EQ(RenderAgainst(table, sequencer, 2), silence);
    EXPECT_EQ(RenderAgainst(state, sequencer, 2), silence);
    RenderBlocks(sequencer, 340);
    // Blocks without the state do not count toward the trigger; without the table they do.
    RenderAgainst(state, sequencer, 100);
    EXPECT_EQ(sequencer.GetPlayFields().fFramesToNext, 5 * kBlockFrames);
    RenderAgainst(table, sequencer, 8);
    EXPECT_EQ(sequencer.GetPlayFields().fFramesToNext, -3 * kBlockFrames);
    RenderBlocks(sequencer, 1);
    EXPECT_EQ(sequencer.GetPlayFields().fFramesToNext, (689 - 345) * kBlockFrames);
    EXPECT_EQ(sequencer.GetPlayFields().fCurrentStart, 22050);
}

TEST(CTesselSequencerControl, CommandsAreTakenAheadOfTheCarry) {
    SBarLoop loop;
    float left[kBlockFrames];
    float right[kBlockFrames];
    loop.fSequencer.Start();
    loop.fSequencer.Render({left, right}, 10);
    loop.fSequencer.RequestStop();
    loop.fSequencer.Render({left, right}, -5);
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Released);
}

TEST(CTesselSequencerControl, OneShotPlaysItsRangeAndEndsTheLoop) {
    for (const bool synced : {true, false}) {
        SBarLoop loop(120000, synced);
        CTesselSequencer& sequencer = loop.fSequencer;
        sequencer.Start();
        sequencer.StartOneShot(2);
        const SamplerActions actions = {{0, [&](CTesselSampler& s) {
                                             synced ? s.StartRange(loop.fTable[2])
                                                    : s.StartFreeRange(44100, 66150);
                                         }}};
        EXPECT_EQ(RenderBlocks(sequencer, 300), SamplerAudio(sequencer, 300, actions));
        EXPECT_EQ(sequencer.GetEqualizer().GetRunFlag(), synced);
        RenderBlocks(sequencer, 900);
        EXPECT_EQ(sequencer.GetPlayFields().fPlayState, kPlayState_Idle);
        EXPECT_THROW(sequencer.StartOneShot(4), std::out_of_range);
    }
}

TEST(CTesselSequencerControl, EmptiedTableRunsDown) {
    SBarLoop loop;
    loop.fSequencer.Start();
    RenderBlocks(loop.fSequencer, 10);
    loop.fSequencer.SetSliceTable(nullptr);
    for (const int32_t blocks : {6000, 1}) {
        RenderBlocks(loop.fSequencer, blocks);
        EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Idle);
        loop.fSequencer.Start();
    }
}

TEST(CTesselSequencerControl, LoopWithoutAnEntry) {
    SBarLoop loop;
    loop.fSequencer.SetLoopRange(30000, 40000);
    loop.fSequencer.ResetPosition();
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fNextStart, 0);
    loop.fSequencer.MoveToLoopStart(); // to the entry before the one behind the loop end
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fNextStart, 22050);
}

TEST(CTesselSequencerControl, NewRateReachesTheSamplerAtTheNextRender) {
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
        loop.fSequencer.SetOutputRate(2000000);
        EXPECT_EQ(loop.fSequencer.GetOutputRate(), 1000000);
        EXPECT_EQ(cache.GetReferenceCount(44100), 0);
    }
    EXPECT_EQ(cache.GetReferenceCount(11025) + cache.GetReferenceCount(1000000), 0);
}

} // namespace
} // namespace NSLOPDLL

#include "SequencerTestKit.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <future>
#include <thread>

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

TEST(CTesselSequencerThread, LostMutexesDelayCommandsAndTriggers) {
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

// Mostly for the thread sanitizer.
TEST(CTesselSequencerThread, ControlCallsBesideARunningRender) {
    SBarLoop loop;
    CTesselSequencer& sequencer = loop.fSequencer;
    std::atomic<bool> stop = false;
    std::atomic<int32_t> batches = 0;
    std::thread render([&] {
        for (; !stop; ++batches) {
            const auto audio = RenderBlocks(sequencer, 2, 50);
            EXPECT_TRUE(std::all_of(audio.begin(), audio.end(),
                                    [](float value) { return std::isfinite(value); }));
        }
    });
    const auto control = [&](int32_t seed) {
        for (int32_t i = seed; i < 200 + seed; ++i) {
            sequencer.RequestStop();
            sequencer.SetOutputRate(20000 + i % 3 * 1000);
            EXPECT_GE(sequencer.GetOutputRate(), 20000);
            sequencer.MoveToLoopStart();
            sequencer.Start();
            sequencer.SetTempo(40000 + 1000 * i);
            EXPECT_GT(sequencer.FramesToOutput(1000), 0);
            sequencer.SetTempoSync(i % 7 != 0);
            sequencer.SetSliceTable(
                std::make_unique<SliceTable>(loop.fTable.begin(), loop.fTable.begin() + i % 5));
            EXPECT_LE(sequencer.GetPlayFields().fPlayState, kPlayState_RunningDown);
            // Gives the thread that only tries the mutexes its turn.
            for (const int32_t seen = batches; batches < seen + 2;) {
                std::this_thread::yield();
            }
        }
    };
    std::thread second(control, 1);
    control(0);
    second.join();
    stop = true;
    render.join();
}

} // namespace
} // namespace NSLOPDLL

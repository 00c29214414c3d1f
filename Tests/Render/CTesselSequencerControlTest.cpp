#include "SequencerTestKit.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace NSLOPDLL {
namespace {

bool IsSilent(const std::vector<float>& audio) {
    return std::all_of(audio.begin(), audio.end(), [](float value) { return value == 0.0f; });
}

void StartPreview(CTesselSequencer& sequencer) {
    sequencer.RequestStop();
    sequencer.MoveToLoopStart();
    sequencer.Start();
}

TEST(CTesselSequencerControl, StartAfterStopNeedsARenderBetweenThem) {
    SBarLoop loop;
    StartPreview(loop.fSequencer); // at rest the start replaces the stop
    const auto first = RenderBlocks(loop.fSequencer, 400);
    StartPreview(loop.fSequencer); // running, the start does nothing and the stop stands
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Running);
    RenderBlocks(loop.fSequencer, 1);
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Released);
    RenderBlocks(loop.fSequencer, 20);
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Idle);
    EXPECT_TRUE(IsSilent(RenderBlocks(loop.fSequencer, 2000)));
    StartPreview(loop.fSequencer);
    EXPECT_EQ(RenderBlocks(loop.fSequencer, 400), first);
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
    loop.fSequencer.Start();
    loop.fSequencer.Render({left, right}, 54);
    EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Running);
}

TEST(CTesselSequencerControl, OneShotPlaysItsRangeAndEndsTheLoop) {
    for (const bool synced : {true, false}) {
        SBarLoop loop(120000, synced);
        CTesselSequencer& sequencer = loop.fSequencer;
        const CSlicePlayRange range = loop.fTable[2];
        sequencer.GetEqualizer().SetRunFlag(!synced);
        sequencer.Start();
        sequencer.StartOneShot(2);
        const SamplerActions actions = {{0, [&](CTesselSampler& s) {
                                             synced ? s.StartRange(range)
                                                    : s.StartFreeRange(range.fStart, range.fEnd);
                                         }}};
        EXPECT_EQ(RenderBlocks(sequencer, 300), SamplerAudio(sequencer, 300, actions));
        EXPECT_EQ(sequencer.GetEqualizer().GetRunFlag(), synced);
        EXPECT_EQ(sequencer.GetPlayFields().fPlayState, kPlayState_RunningDown);
        RenderBlocks(sequencer, 900);
        EXPECT_EQ(sequencer.GetPlayFields().fPlayState, kPlayState_Idle);
        EXPECT_THROW(sequencer.StartOneShot(4), std::out_of_range);
    }
}

TEST(CTesselSequencerControl, EmptiedTableRunsDown) {
    for (const bool synced : {true, false}) {
        SBarLoop loop(120000, synced);
        loop.fSequencer.Start();
        RenderBlocks(loop.fSequencer, 10);
        loop.fSequencer.SetSliceTable(nullptr);
        RenderBlocks(loop.fSequencer, 1);
        EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_RunningDown);
        RenderBlocks(loop.fSequencer, 6000);
        StartPreview(loop.fSequencer);
        EXPECT_TRUE(IsSilent(RenderBlocks(loop.fSequencer, 2)));
        EXPECT_EQ(loop.fSequencer.GetPlayFields().fPlayState, kPlayState_Idle);
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
        loop.fSequencer.CommitOutputRate(CTesselSequencer::PrepareOutputRate(1));
        EXPECT_EQ(cache.GetReferenceCount(22051), 0); // no render took it
        EXPECT_EQ(loop.fSequencer.FramesToOutput(44100), 11025);
        EXPECT_EQ(loop.fSequencer.GetSampler().GetOutputRate(), 44100);
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

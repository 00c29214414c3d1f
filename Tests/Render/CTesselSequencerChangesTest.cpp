#include "SequencerTestKit.h"

// Changes of sync and loop range under a running loop.
namespace NSLOPDLL {
namespace {

// The bar at 100: a beat of 22050 is 26460 output frames, and the beats are due at 0, 413 (413.4),
// 827 (826.9) and 1240 (1240.3) blocks.
constexpr int32_t kSlowTempo = 100000;

// The left side of a run that is switched to `synced` after `blocks` blocks.
std::vector<float> RenderSwitch(CTesselSequencer& sequencer, int32_t blocks, bool synced,
                                int32_t blocksAfter) {
    std::vector<float> audio = RenderBlocks(sequencer, blocks);
    sequencer.SetTempoSync(synced);
    const std::vector<float> rest = RenderBlocks(sequencer, blocksAfter);
    audio.insert(audio.end(), rest.begin(), rest.end());
    return audio;
}

TEST(CTesselSequencerChanges, SyncOffFreesTheLoopAtItsNextTrigger) {
    SBarLoop loop(kSlowTempo);
    loop.fSequencer.Start();
    const SamplerActions actions = {
        {0, [&](CTesselSampler& s) { s.StartRange(loop.fTable[0]); }},
        {413 - 1, [](CTesselSampler& s) { s.StartFreeRun(22050); }},
    };
    EXPECT_EQ(RenderSwitch(loop.fSequencer, 10, false, 1990),
              SamplerAudio(loop.fSequencer, 2000, actions));
    EXPECT_FALSE(loop.fSequencer.GetEqualizer().GetRunFlag());
}

TEST(CTesselSequencerChanges, SyncOnWaitsForTheFreeVoiceToReachARange) {
    SBarLoop loop(kSlowTempo, false);
    loop.fSequencer.Start();
    // From 3200 to 22050 are 294.5 blocks, the one of the change counting down already.
    const SamplerActions actions = {
        {0, [](CTesselSampler& s) { s.StartFreeRun(0); }},
        {50 + 294, [&](CTesselSampler& s) { s.StartRange(loop.fTable[1]); }},
        {50 + 294 + 827 - 413, [&](CTesselSampler& s) { s.StartRange(loop.fTable[2]); }},
    };
    EXPECT_EQ(RenderSwitch(loop.fSequencer, 50, true, 950),
              SamplerAudio(loop.fSequencer, 1000, actions));
    EXPECT_TRUE(loop.fSequencer.GetEqualizer().GetRunFlag());
}

// Without a range ahead the way leads round the loop, or from behind its end round the sample.
TEST(CTesselSequencerChanges, SyncOnInTheLastRange) {
    for (const int32_t loopEnd : {kBarFrames, 44100}) {
        SBarLoop loop(kSlowTempo, false);
        StandOn(loop.fSequencer, 66150, 22050, loopEnd);
        loop.fSequencer.Start();
        RenderSwitch(loop.fSequencer, 100, true, 1);
        // From 72550 to the end at 88200, 244.5 blocks.
        EXPECT_TRUE(loop.fSequencer.GetPlayFields().fSyncPending);
        EXPECT_EQ(loop.fSequencer.GetPlayFields().fFramesToNext, 244 * kBlockFrames);
        EXPECT_EQ(loop.fSequencer.GetPlayFields().fCurrentStart, loopEnd == kBarFrames ? 22050 : 0);
        // Off again before the trigger: the free voice plays on.
        RenderSwitch(loop.fSequencer, 0, false, 244);
        EXPECT_FALSE(loop.fSequencer.GetPlayFields().fSyncPending);
        EXPECT_FALSE(loop.fSequencer.GetPlayFields().fSyncedNow);
    }
}

// Each is played to the block before its second trigger and then has its loop moved. The loops are
// whole beats, so that their own tempo stays.
TEST(CTesselSequencerChanges, MovedLoopsTakeAnotherNextRange) {
    struct SMove {
        int32_t fEnd;               // of the loop from 0, before the move
        int32_t fNewStart, fNewEnd; // and after it
        int32_t fFirst;             // where the play starts
        int32_t fCurrent, fNext;    // what the second trigger starts and plans
        int32_t fCurrentTime;       // its time in blocks
    };
    const SMove moves[] = {
        // The range that was next became the loop end: round again.
        {88200, 0, 22050, 0, 0, 0, 0},
        // The wrap was planned, but the range that plays fell behind the end: on through the table.
        {44100, 0, 22050, 22050, 44100, 66150, 827},
        // The wrap was planned and is none any more; the clock stands at the loop start already.
        {44100, 0, 88200, 22050, 44100, 66150, 0},
        // Times count from the new start.
        {88200, 22050, 88200, 22050, 44100, 66150, 413},
    };
    for (const SMove& move : moves) {
        SBarLoop loop(kSlowTempo);
        CTesselSequencer& sequencer = loop.fSequencer;
        StandOn(sequencer, move.fFirst, 0, move.fEnd);
        sequencer.SetBeats(move.fEnd / 22050);
        sequencer.Start();
        RenderBlocks(sequencer, 1);
        RenderBlocks(sequencer, sequencer.GetPlayFields().fFramesToNext / kBlockFrames - 1);
        EXPECT_EQ(sequencer.GetPlayFields().fCurrentStart, move.fFirst);
        sequencer.SetLoopRange(move.fNewStart, move.fNewEnd);
        sequencer.SetBeats((move.fNewEnd - move.fNewStart) / 22050);
        RenderBlocks(sequencer, 1);
        const CSequencerPlayFields fields = sequencer.GetPlayFields();
        EXPECT_EQ(fields.fCurrentStart, move.fCurrent);
        EXPECT_EQ(fields.fNextStart, move.fNext);
        EXPECT_EQ(fields.fCurrentTime, move.fCurrentTime * kBlockFrames);
    }
}

} // namespace
} // namespace NSLOPDLL

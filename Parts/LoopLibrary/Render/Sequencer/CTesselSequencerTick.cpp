#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/BlockTime.h"

#include <utility>

// What the render thread does at the head of each block, and when a trigger is due. Nothing here
// waits, allocates or frees.
namespace NSLOPDLL {

void CTesselSequencer::Tick() noexcept {
    const NSSupport::CMutexTryLock stateLock(fStateMutex);
    if (!stateLock) {
        return;
    }
    NoteVoice();
    if (fPlay.fPlayState != kPlayState_Running) {
        return;
    }
    if (IsTempoSynced()) {
        FollowTempo();
        if (!fPlay.fSyncedNow && !fPlay.fSyncPending) {
            const NSSupport::CMutexTryLock tableLock(fTableMutex);
            if (tableLock && HasTable()) {
                PlanIntoSync();
            }
        }
    }
    fPlay.fFramesToNext = SaturateToInt32(int64_t{fPlay.fFramesToNext} - kBlockFrames);
    if (fPlay.fFramesToNext < 1) {
        const NSSupport::CMutexTryLock tableLock(fTableMutex);
        if (tableLock) {
            Trigger();
        }
    }
}

void CTesselSequencer::NoteVoice() noexcept {
    const bool isIdle = fSampler.IsCurrentVoiceIdle();
    fPlay.fVoiceSounding = !isIdle && !fSampler.IsCurrentVoiceInTail();
    fPlay.fPlayPosition =
        fPlay.fVoiceSounding ? fSampler.GetCurrentVoicePosition() : fPlay.fNextStart;
    const bool isEnding =
        fPlay.fPlayState == kPlayState_Released || fPlay.fPlayState == kPlayState_RunningDown;
    if (isEnding && isIdle) {
        fPlay.fPlayState = kPlayState_Idle;
    }
}

void CTesselSequencer::FollowTempo() noexcept {
    const int32_t tempo = fTempo;
    if (tempo != fPlay.fPlannedTempo) {
        RescalePlan(fPlay.fPlannedTempo, tempo);
        fPlay.fPlannedTempo = tempo;
    }
    const int32_t loopTempo = GetLoopTempo();
    if (loopTempo != fPlay.fPlannedLoopTempo && loopTempo != 0 && fPlay.fPlannedLoopTempo != 0) {
        RescalePlan(loopTempo, fPlay.fPlannedLoopTempo);
        fPlay.fPlannedLoopTempo = loopTempo;
    }
}

void CTesselSequencer::RescalePlan(int32_t numerator, int32_t denominator) noexcept {
    fPlay.fFramesToNext = RescaleToBlock(fPlay.fFramesToNext, numerator, denominator);
    fPlay.fLastGap = RescaleToBlock(fPlay.fLastGap, numerator, denominator);
    fPlay.fCurrentTime = RescaleToBlock(fPlay.fCurrentTime, numerator, denominator);
}

void CTesselSequencer::Trigger() noexcept {
    if (!HasTable()) {
        RunDown();
        return;
    }
    if (fPlay.fSyncPending) {
        TriggerIntoSync();
    } else {
        FollowMovedLoopEnd();
        fPlay.fCurrentStart = fPlay.fNextStart;
        fPlay.fNextStart = NextStart(fPlay.fCurrentStart);
        if (LoopStart() != fPlay.fPlannedLoopStart) {
            RebuildCurrentTime();
        }
        PlanNextTrigger();
        StartCurrentVoice();
    }
    NotePlannedLoop();
}

void CTesselSequencer::StartCurrentVoice() noexcept {
    if (!fPlay.fSyncedNow) {
        // A free voice goes round by itself. A change into sync plans its first trigger in Tick.
        return;
    }
    if (!IsTempoSynced()) {
        fSampler.StartFreeRun(fPlay.fCurrentStart);
        fEqualizer.SetRunFlag(false);
        fPlay.fSyncedNow = false;
        return;
    }
    // A table that was exchanged meanwhile may have no entry there any more.
    const CSliceTableLookup lookup = Lookup();
    const CSlicePlayRange& range = lookup[lookup.FindRange(fPlay.fCurrentStart)];
    if (range.fStart == fPlay.fCurrentStart) {
        fSampler.StartRange(range);
        fEqualizer.SetRunFlag(true);
    }
}

} // namespace NSLOPDLL

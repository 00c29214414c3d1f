#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

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
    const CClockSettings now = ClockSettings(fSampler.GetOutputRate());
    if (now.fIsSynced) {
        fPlay.fClock.FollowTempo(now);
        if (fPlay.fClock.IsFree()) {
            const NSSupport::CMutexTryLock tableLock(fTableMutex);
            if (tableLock && HasTable()) {
                fPlay.fClock.PlanIntoSync(fPlay.fPlayPosition, *fSliceTable, now);
            }
        }
    }
    if (fPlay.fClock.CountBlock()) {
        const NSSupport::CMutexTryLock tableLock(fTableMutex);
        if (tableLock) {
            Trigger(now);
        }
    }
}

void CTesselSequencer::NoteVoice() noexcept {
    const bool isIdle = fSampler.IsCurrentVoiceIdle();
    fPlay.fVoiceSounding = !isIdle && !fSampler.IsCurrentVoiceInTail();
    fPlay.fPlayPosition = fPlay.fVoiceSounding ? fSampler.GetCurrentVoicePosition()
                                               : fPlay.fClock.GetPlan().fNextStart;
    const bool isEnding =
        fPlay.fPlayState == kPlayState_Released || fPlay.fPlayState == kPlayState_RunningDown;
    if (isEnding && isIdle) {
        fPlay.fPlayState = kPlayState_Idle;
    }
}

void CTesselSequencer::Trigger(const CClockSettings& now) noexcept {
    if (!HasTable()) {
        RunDown();
        return;
    }
    const CTriggered triggered = fPlay.fClock.Trigger(*fSliceTable, now);
    if (triggered.fRange != nullptr) {
        fSampler.StartRange(*triggered.fRange);
        fEqualizer.SetRunFlag(true);
    } else if (triggered.fIsFreeRun) {
        fSampler.StartFreeRun(fPlay.fClock.GetPlan().fCurrentStart);
        fEqualizer.SetRunFlag(false);
    }
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

// What the control side asks of a sequencer. Requests wait in fPlay.fCommand for the render thread.
namespace NSLOPDLL {

void CTesselSequencer::ResetPosition() {
    const NSSupport::CMutexLock stateLock(fStateMutex);
    const NSSupport::CMutexLock tableLock(fTableMutex);
    int32_t next = 0;
    if (HasTable()) {
        const CSliceTableLookup lookup = Lookup();
        const int32_t start = lookup[lookup.FindLoopEntry()].fStart;
        const bool isInLoop =
            start >= fWaveSample->GetLoopStart() && start < fWaveSample->GetLoopEnd();
        next = isInLoop ? start : lookup[0].fStart;
    }
    fPlay.fClock.SetNextStart(next);
}

void CTesselSequencer::MoveToLoopStart() {
    const NSSupport::CMutexLock stateLock(fStateMutex);
    const bool isStopping = fPlay.fCommand == kPlayCommand_Stop;
    if (fPlay.fPlayState >= kPlayState_Running && !isStopping) {
        return;
    }
    const NSSupport::CMutexLock tableLock(fTableMutex);
    if (!HasTable()) {
        return;
    }
    const CSliceTableLookup lookup = Lookup();
    size_t entry = lookup.FindLoopEntry();
    if (lookup[entry].fStart >= fWaveSample->GetLoopEnd() && entry != 0) {
        --entry;
    }
    fPlay.fClock.SetNextStart(lookup[entry].fStart);
    if (fPlay.fPlayState == kPlayState_Idle) {
        fPlay.fPlayPosition = lookup[entry].fStart;
    }
}

void CTesselSequencer::Start() {
    const NSSupport::CMutexLock stateLock(fStateMutex);
    if (fPlay.fPlayState == kPlayState_Running) {
        return;
    }
    const NSSupport::CMutexLock tableLock(fTableMutex);
    if (!HasTable()) {
        return;
    }
    const CSliceTableLookup lookup = Lookup();
    const CSlicePlayRange& range = lookup[lookup.FindRange(fPlay.fClock.GetPlan().fNextStart)];
    fPlay.fCommand = kPlayCommand_Start;
    fPlay.fCommandRange = range;
    fPlay.fPlayPosition = range.fStart;
    fPlay.fClock.SetNextStart(range.fStart);
    fPlay.fVoiceSounding = true;
    TimePendingStart();
}

// The time of an entry takes a walk through the table, for which the render thread has no time.
void CTesselSequencer::TimePendingStart() {
    if (fPlay.fCommand != kPlayCommand_Start) {
        return;
    }
    const NSSupport::CMutexLock tableLock(fTableMutex);
    if (HasTable()) {
        fPlay.fCommandTime = CTriggerClock::EntryTime(fPlay.fCommandRange.fStart, *fSliceTable,
                                                      ClockSettings(fOutputRate));
    }
}

void CTesselSequencer::StartOneShot(uint32_t index) {
    const CSlicePlayRange range = GetSlicePlayRange(index);
    const NSSupport::CMutexLock lock(fStateMutex);
    fPlay.fCommand = kPlayCommand_OneShot;
    fPlay.fCommandRange = range;
}

void CTesselSequencer::RequestStop() {
    const NSSupport::CMutexLock lock(fStateMutex);
    fPlay.fCommand = kPlayCommand_Stop;
}

CSequencerPlayFields CTesselSequencer::GetPlayFields() const {
    const NSSupport::CMutexLock lock(fStateMutex);
    return fPlay;
}

void CTesselSequencer::PlaySlice(uint32_t index) {
    fSampler.StartRange(GetSlicePlayRange(index));
    fEqualizer.SetRunFlag(IsTempoSynced());
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include <algorithm>

// The render thread's side: requests are taken and blocks are filled. Nothing here waits, allocates
// or frees.
namespace NSLOPDLL {

void CTesselSequencer::Render(const CBlockBuffers& buffers, int32_t frameCount) noexcept {
    TakeRequests();
    int32_t done = ServeCarry(buffers, frameCount);
    while (done < frameCount) {
        Tick();
        const int32_t wanted = frameCount - done;
        const CBlockBuffers rest = {buffers.fLeft + done, buffers.fRight + done};
        if (wanted >= kBlockFrames) {
            RenderBlock(rest);
            done += kBlockFrames;
        } else {
            RenderBlock({fCarryLeft, fCarryRight});
            fCarryCount = kBlockFrames;
            done += ServeCarry(rest, wanted);
        }
    }
}

int32_t CTesselSequencer::ServeCarry(const CBlockBuffers& buffers, int32_t frameCount) noexcept {
    const int32_t count = std::clamp(frameCount, 0, fCarryCount);
    const int32_t first = kBlockFrames - fCarryCount;
    std::copy_n(fCarryLeft + first, count, buffers.fLeft);
    std::copy_n(fCarryRight + first, count, buffers.fRight);
    fCarryCount -= count;
    return count;
}

void CTesselSequencer::RenderBlock(const CBlockBuffers& buffers) noexcept {
    fSampler.RenderBlock(buffers);
    fEqualizer.Process(buffers);
}

void CTesselSequencer::ResetRender() noexcept {
    fSampler.ResetVoices();
    fEqualizer.Reset();
    fEqualizer.SetRunFlag(IsTempoSynced());
}

void CTesselSequencer::TakeRequests() noexcept {
    const NSSupport::CMutexTryLock stateLock(fStateMutex);
    if (!stateLock) {
        return;
    }
    AdoptOutputRate();
    TakeCommand();
    if (fPlay.fPlayState == kPlayState_Running) {
        const NSSupport::CMutexTryLock tableLock(fTableMutex);
        if (tableLock && !HasTable()) {
            RunDown();
        }
    }
}

void CTesselSequencer::AdoptOutputRate() noexcept {
    if (fTablesArePending) {
        fTablesArePending = false;
        fSampler.SwapTables(fTableSlot);
        fEqualizer.SetSampleRate(fSampler.GetOutputRate());
    }
}

void CTesselSequencer::TakeCommand() noexcept {
    switch (fPlay.fCommand) {
    case kPlayCommand_Start:
        TakeStart();
        break;
    case kPlayCommand_OneShot:
        TakeOneShot();
        break;
    case kPlayCommand_Stop:
        TakeStop();
        break;
    default:
        fPlay.fCommand = kPlayCommand_None;
        break;
    }
}

void CTesselSequencer::TakeStart() noexcept {
    const NSSupport::CMutexTryLock tableLock(fTableMutex);
    if (!tableLock) {
        return;
    }
    fPlay.fCommand = kPlayCommand_None;
    if (!HasTable()) {
        return;
    }
    fPlay.fPlayState = kPlayState_Running;
    const CClockSettings now = ClockSettings(fSampler.GetOutputRate());
    const int32_t start = fPlay.fCommandRange.fStart;
    fPlay.fClock.Start(start, fPlay.fCommandTime, *fSliceTable, now);
    if (now.fIsSynced) {
        fSampler.StartRange(fPlay.fCommandRange);
    } else {
        fSampler.StartFreeRun(start);
    }
    fEqualizer.SetRunFlag(now.fIsSynced);
}

void CTesselSequencer::TakeOneShot() noexcept {
    const NSSupport::CMutexTryLock tableLock(fTableMutex);
    if (!tableLock) {
        return;
    }
    fPlay.fCommand = kPlayCommand_None;
    if (!HasTable()) {
        return;
    }
    fPlay.fPlayState = kPlayState_RunningDown;
    const bool isSynced = IsTempoSynced();
    if (isSynced) {
        fSampler.StartRange(fPlay.fCommandRange);
    } else {
        fSampler.StartFreeRange(fPlay.fCommandRange.fStart, fPlay.fCommandRange.fEnd);
    }
    fEqualizer.SetRunFlag(isSynced);
}

void CTesselSequencer::TakeStop() noexcept {
    fPlay.fPlayState = kPlayState_Released;
    fSampler.ReleaseAllVoices();
    fPlay.fCommand = kPlayCommand_None;
}

void CTesselSequencer::RunDown() noexcept {
    fPlay.fPlayState = kPlayState_RunningDown;
    fPlay.fClock.SetNextStart(0);
    fPlay.fPlayPosition = 0;
    fPlay.fVoiceSounding = false;
    fSampler.EndFreeLoops();
}

} // namespace NSLOPDLL

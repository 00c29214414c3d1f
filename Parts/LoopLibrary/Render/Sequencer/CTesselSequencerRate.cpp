#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/OutputRate.h"

// A new output rate goes from the control side, which gets the memory, to the render thread, which
// may be fading a stopped loop out on the old tables at that moment. The old tables come back the
// same way, since only the control side may free them.
namespace NSLOPDLL {

void CTesselSequencer::CommitOutputRate(CDSPTablesHandle tables) {
    const NSSupport::CMutexLock lock(fStateMutex);
    fOutputRate = tables->GetSampleRate();
    // What the slot held goes with the argument, outside the mutex.
    fTableSlot.Swap(tables);
    fTablesArePending = true;
    TimePendingStart();
}

void CTesselSequencer::SetOutputRate(int32_t rate) {
    CommitOutputRate(CDSPTablesHandle(ClipOutputRate(rate)));
}

void CTesselSequencer::ApplyOutputRate() {
    CDSPTablesHandle retired;
    const NSSupport::CMutexLock lock(fStateMutex);
    AdoptOutputRate();
    fTableSlot.Swap(retired);
}

} // namespace NSLOPDLL

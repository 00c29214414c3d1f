#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/OutputRate.h"

#include <utility>

// A new output rate goes from the control side, which gets the memory, to the render thread, which
// may be fading a stopped loop out on the old tables at that moment. The old tables come back the
// same way, since only the control side may free them.
namespace NSLOPDLL {

COutputRateTables CTesselSequencer::PrepareOutputRate(int32_t rate) {
    return COutputRateTables(CDSPTablesCache::Instance().Acquire(ClipOutputRate(rate)));
}

void CTesselSequencer::CommitOutputRate(COutputRateTables tables) {
    const int32_t rate = tables->GetSampleRate();
    int32_t retiredRate = 0;
    {
        const NSSupport::CMutexLock lock(fStateMutex);
        // What no render has taken goes with the argument, outside the mutex.
        fPendingTables.swap(tables);
        retiredRate = std::exchange(fRetiredRate, 0);
        fOutputRate = rate;
    }
    ReleaseRetiredRate(retiredRate);
}

void CTesselSequencer::SetOutputRate(int32_t rate) {
    CommitOutputRate(PrepareOutputRate(rate));
}

void CTesselSequencer::ApplyOutputRate() {
    int32_t retiredRate = 0;
    {
        const NSSupport::CMutexLock lock(fStateMutex);
        AdoptOutputRate();
        retiredRate = std::exchange(fRetiredRate, 0);
    }
    ReleaseRetiredRate(retiredRate);
}

void CTesselSequencer::ReleaseRetiredRate(int32_t rate) noexcept {
    if (rate != 0) {
        CDSPTablesCache::Instance().Release(rate);
    }
}

} // namespace NSLOPDLL

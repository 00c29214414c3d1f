#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/BlockTime.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <utility>

// A running loop whose sync is switched on or whose loop range is moved. Runs on the render thread;
// nothing here waits, allocates or frees.
namespace NSLOPDLL {

// The free voice plays on to the next range, which then starts the triggers.
void CTesselSequencer::PlanIntoSync() noexcept {
    fPlay.fCurrentStart = NextStart(fPlay.fPlayPosition);
    RebuildCurrentTime();
    fPlay.fNextStart = NextStart(fPlay.fCurrentStart);
    fPlay.fFramesToNext =
        RoundToBlock(TimeAtRate(DistanceIntoSync(), false, fSampler.GetOutputRate()));
    NotePlannedTempos();
    fPlay.fSyncPending = true;
}

// Source frames that the free voice has to go to the range of fCurrentStart.
int64_t CTesselSequencer::DistanceIntoSync() const noexcept {
    const int64_t position = fPlay.fPlayPosition;
    const int64_t target = fPlay.fCurrentStart;
    if (target > position) {
        return target - position;
    }
    if (position >= LoopEnd()) {
        return int64_t{fWaveSample->GetFrameCount()} - position + target;
    }
    const int64_t skipped = target >= LoopStart() ? LoopStart() : 0;
    return LoopEnd() - position + target - skipped;
}

// The trigger of the range that PlanIntoSync chose; fNextStart stands behind it already. When the
// sync has gone off again meanwhile, the free voice just plays on.
void CTesselSequencer::TriggerIntoSync() noexcept {
    fPlay.fSyncPending = false;
    fPlay.fSyncedNow = IsTempoSynced();
    if (!fPlay.fSyncedNow) {
        return;
    }
    PlanNextTrigger();
    const CSliceTableLookup lookup = Lookup();
    fSampler.StartRange(lookup[lookup.FindRange(fPlay.fCurrentStart)]);
    fEqualizer.SetRunFlag(true);
}

// The next range was chosen with the old loop end. Where only the choice changes, the clock keeps
// the time that was planned: it comes right again at the next wrap.
void CTesselSequencer::FollowMovedLoopEnd() noexcept {
    const int32_t end = LoopEnd();
    if (end > fPlay.fPlannedLoopEnd && fPlay.fNextStart <= fPlay.fCurrentStart) {
        fPlay.fNextStart = NextStart(fPlay.fCurrentStart);
    }
    if (end >= fPlay.fPlannedLoopEnd) {
        return;
    }
    if (fPlay.fCurrentStart >= end) {
        fPlay.fNextStart = NextStart(fPlay.fCurrentStart);
        const int32_t current = std::exchange(fPlay.fCurrentStart, fPlay.fNextStart);
        RebuildCurrentTime();
        fPlay.fCurrentStart = current;
    } else if (fPlay.fNextStart == end) {
        fPlay.fNextStart = NextStart(fPlay.fCurrentStart);
    }
}

} // namespace NSLOPDLL

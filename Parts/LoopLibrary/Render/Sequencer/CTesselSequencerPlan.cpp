#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/BlockTime.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <algorithm>

// When the next trigger comes. Every time is worked out afresh as a distance from the reference
// point, so that rounding errors cannot add up. Nothing here waits, allocates or frees.
namespace NSLOPDLL {

namespace {

// A trigger at `time`, but not in the block of the one at `previous`.
int64_t AfterPrevious(int32_t time, int32_t previous) noexcept {
    return std::max(int64_t{time}, int64_t{previous} + kBlockFrames);
}

} // namespace

int32_t CTesselSequencer::TimeAtRate(int64_t frames, bool useTempo,
                                     int32_t outputRate) const noexcept {
    auto scaled = static_cast<double>(frames);
    if (useTempo) {
        scaled = GetLoopTempo() * scaled / fTempo;
    }
    return ScaleFrames(scaled, outputRate, GetSourceRate());
}

int32_t CTesselSequencer::FramesToOutput(int32_t frames) const noexcept {
    return TimeAtRate(frames, IsTempoSynced(), GetOutputRate());
}

int32_t CTesselSequencer::OutputTime(int64_t frames) const noexcept {
    return TimeAtRate(frames, IsTempoSynced(), fSampler.GetOutputRate());
}

int32_t CTesselSequencer::BlockTime(int64_t frames) const noexcept {
    return RoundToBlock(OutputTime(frames));
}

int32_t CTesselSequencer::NextStart(int32_t position) const noexcept {
    const CSliceTableLookup lookup = Lookup();
    return lookup[lookup.FindNextRange(position)].fStart;
}

void CTesselSequencer::RebuildCurrentTime() noexcept {
    const CSliceTableLookup lookup = Lookup();
    const bool isBeforeLoop = fPlay.fCurrentStart < LoopStart();
    const int64_t base = isBeforeLoop ? 0 : LoopStart();
    size_t entry = isBeforeLoop ? 0 : lookup.FindLoopEntry();
    int32_t time = BlockTime(lookup[entry].fStart - base);
    for (++entry; entry < lookup.GetCount() && fPlay.fCurrentStart >= lookup[entry].fStart;
         ++entry) {
        time = SaturateToInt32(AfterPrevious(BlockTime(lookup[entry].fStart - base), time));
    }
    fPlay.fCurrentTime = time;
    fPlay.fLastGap = 0;
}

void CTesselSequencer::PlanNextTrigger() noexcept {
    fPlay.fCurrentTime = SaturateToInt32(int64_t{fPlay.fCurrentTime} + fPlay.fLastGap);
    if (fPlay.fNextStart > fPlay.fCurrentStart) {
        PlanForward();
    } else {
        PlanWrap();
    }
    NotePlannedTempos();
}

void CTesselSequencer::PlanForward() noexcept {
    const int32_t loopStart = LoopStart();
    const int64_t next = fPlay.fNextStart;
    const bool isCurrentBefore = fPlay.fCurrentStart < loopStart;
    const bool isNextBefore = next < loopStart;
    // Before the loop, and up to the entry into it, times count from the start of the sample.
    const int32_t time = BlockTime(isCurrentBefore ? next : next - loopStart);
    const int32_t gap =
        SaturateToInt32(AfterPrevious(time, fPlay.fCurrentTime) - fPlay.fCurrentTime);
    fPlay.fFramesToNext = gap;
    fPlay.fLastGap = gap;
    if (isCurrentBefore && !isNextBefore) {
        fPlay.fCurrentTime = BlockTime(next - loopStart);
        fPlay.fLastGap = 0;
    }
}

void CTesselSequencer::PlanWrap() noexcept {
    const int64_t start = LoopStart();
    const int64_t end = LoopEnd();
    const int64_t current = fPlay.fCurrentStart;
    const int64_t next = fPlay.fNextStart;
    const bool isCurrentInLoop = current >= start && current < end;
    // From the loop start where a position is counted by the loop, otherwise from the sample's.
    const int64_t nextOffset = next >= start ? next - start : next;
    int64_t distance = 0;
    if (isCurrentInLoop) {
        distance =
            int64_t{OutputTime(end - start)} + OutputTime(nextOffset) - OutputTime(current - start);
    } else {
        distance = int64_t{OutputTime(fWaveSample->GetFrameCount())} + OutputTime(next) -
                   OutputTime(current);
    }
    fPlay.fFramesToNext = std::max(RoundToBlock(SaturateToInt32(distance)), kBlockFrames);
    fPlay.fCurrentTime = BlockTime(nextOffset);
    fPlay.fLastGap = 0;
}

void CTesselSequencer::NotePlannedTempos() noexcept {
    fPlay.fPlannedLoopTempo = GetLoopTempo();
    fPlay.fPlannedTempo = fTempo;
}

void CTesselSequencer::NotePlannedLoop() noexcept {
    fPlay.fPlannedLoopStart = LoopStart();
    fPlay.fPlannedLoopEnd = LoopEnd();
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sequencer/CTriggerClock.h"

#include "LoopLibrary/Render/Common/BlockTime.h"
#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Slices/CSliceTableLookup.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

// A trigger at `time`, but not in the block of the one at `previous`.
int64_t AfterPrevious(int32_t time, int32_t previous) noexcept {
    return std::max(int64_t{time}, int64_t{previous} + kBlockFrames);
}

int32_t NextStart(int32_t position, CTriggerClock::Table table,
                  const CClockSettings& now) noexcept {
    const CSliceTableLookup lookup(table, now.fLoopStart, now.fLoopEnd);
    return lookup[lookup.FindNextRange(position)].fStart;
}

} // namespace

int32_t CTriggerClock::EntryTime(int32_t start, Table table, const CClockSettings& now) noexcept {
    const CSliceTableLookup lookup(table, now.fLoopStart, now.fLoopEnd);
    const bool isBeforeLoop = start < now.fLoopStart;
    const int64_t base = isBeforeLoop ? 0 : now.fLoopStart;
    size_t entry = isBeforeLoop ? 0 : lookup.FindLoopEntry();
    int32_t time = now.BlockTime(lookup[entry].fStart - base);
    for (++entry; entry < lookup.GetCount() && start >= lookup[entry].fStart; ++entry) {
        time = SaturateToInt32(AfterPrevious(now.BlockTime(lookup[entry].fStart - base), time));
    }
    return time;
}

void CTriggerClock::Start(int32_t start, int32_t time, Table table,
                          const CClockSettings& now) noexcept {
    fPlan.fCurrentStart = start;
    SetCurrentTime(time);
    fPlan.fNextStart = NextStart(start, table, now);
    PlanNext(now);
    fPlan.fSyncedNow = now.fIsSynced;
    fPlan.fSyncPending = false;
    NoteLoop(now);
}

void CTriggerClock::FollowTempo(const CClockSettings& now) noexcept {
    if (now.fTempo != fPlan.fPlannedTempo) {
        Rescale(fPlan.fPlannedTempo, now.fTempo);
        fPlan.fPlannedTempo = now.fTempo;
    }
    if (now.fLoopTempo != fPlan.fPlannedLoopTempo && now.fLoopTempo != 0 &&
        fPlan.fPlannedLoopTempo != 0) {
        Rescale(now.fLoopTempo, fPlan.fPlannedLoopTempo);
        fPlan.fPlannedLoopTempo = now.fLoopTempo;
    }
}

bool CTriggerClock::CountBlock() noexcept {
    fPlan.fFramesToNext = SaturateToInt32(int64_t{fPlan.fFramesToNext} - kBlockFrames);
    return fPlan.fFramesToNext < 1;
}

CTriggered CTriggerClock::Trigger(Table table, const CClockSettings& now) noexcept {
    CTriggered triggered;
    if (fPlan.fSyncPending) {
        triggered = TriggerIntoSync(table, now);
    } else {
        FollowMovedLoopEnd(table, now);
        fPlan.fCurrentStart = fPlan.fNextStart;
        fPlan.fNextStart = NextStart(fPlan.fCurrentStart, table, now);
        if (now.fLoopStart != fPlan.fPlannedLoopStart) {
            SetCurrentTime(EntryTime(fPlan.fCurrentStart, table, now));
        }
        PlanNext(now);
        triggered = VoiceOfCurrent(table, now.fIsSynced);
    }
    NoteLoop(now);
    return triggered;
}

CTriggered CTriggerClock::VoiceOfCurrent(Table table, bool isSynced) noexcept {
    if (!fPlan.fSyncedNow) {
        // A free voice goes round by itself. PlanIntoSync plans the trigger that ends it.
        return {};
    }
    if (!isSynced) {
        fPlan.fSyncedNow = false;
        return {nullptr, true};
    }
    // A table that was exchanged meanwhile may have no entry there any more.
    const CSlicePlayRange& range = table[CSliceTableLookup::FindRange(table, fPlan.fCurrentStart)];
    return {range.fStart == fPlan.fCurrentStart ? &range : nullptr, false};
}

void CTriggerClock::SetCurrentTime(int32_t time) noexcept {
    fPlan.fCurrentTime = time;
    fPlan.fLastGap = 0;
}

void CTriggerClock::PlanNext(const CClockSettings& now) noexcept {
    fPlan.fCurrentTime = SaturateToInt32(int64_t{fPlan.fCurrentTime} + fPlan.fLastGap);
    if (fPlan.fNextStart > fPlan.fCurrentStart) {
        PlanForward(now);
    } else {
        PlanWrap(now);
    }
    NoteTempos(now);
}

void CTriggerClock::PlanForward(const CClockSettings& now) noexcept {
    const int64_t next = fPlan.fNextStart;
    const bool isCurrentBefore = fPlan.fCurrentStart < now.fLoopStart;
    const bool isNextBefore = next < now.fLoopStart;
    // Before the loop, and up to the entry into it, times count from the start of the sample.
    const int32_t time = now.BlockTime(isCurrentBefore ? next : next - now.fLoopStart);
    const int32_t gap =
        SaturateToInt32(AfterPrevious(time, fPlan.fCurrentTime) - fPlan.fCurrentTime);
    fPlan.fFramesToNext = gap;
    fPlan.fLastGap = gap;
    if (isCurrentBefore && !isNextBefore) {
        SetCurrentTime(now.BlockTime(next - now.fLoopStart));
    }
}

void CTriggerClock::PlanWrap(const CClockSettings& now) noexcept {
    const int64_t start = now.fLoopStart;
    const int64_t end = now.fLoopEnd;
    const int64_t current = fPlan.fCurrentStart;
    const int64_t next = fPlan.fNextStart;
    const bool isCurrentInLoop = current >= start && current < end;
    // From the loop start where a position is counted by the loop, otherwise from the sample's.
    const int64_t nextOffset = next >= start ? next - start : next;
    int64_t distance = 0;
    if (isCurrentInLoop) {
        distance = int64_t{now.OutputTime(end - start)} + now.OutputTime(nextOffset) -
                   now.OutputTime(current - start);
    } else {
        distance = int64_t{now.OutputTime(now.fFrameCount)} + now.OutputTime(next) -
                   now.OutputTime(current);
    }
    fPlan.fFramesToNext = std::max(RoundToBlock(SaturateToInt32(distance)), kBlockFrames);
    SetCurrentTime(now.BlockTime(nextOffset));
}

void CTriggerClock::Rescale(int32_t numerator, int32_t denominator) noexcept {
    fPlan.fFramesToNext = RescaleToBlock(fPlan.fFramesToNext, numerator, denominator);
    fPlan.fLastGap = RescaleToBlock(fPlan.fLastGap, numerator, denominator);
    fPlan.fCurrentTime = RescaleToBlock(fPlan.fCurrentTime, numerator, denominator);
}

void CTriggerClock::NoteTempos(const CClockSettings& now) noexcept {
    fPlan.fPlannedLoopTempo = now.fLoopTempo;
    fPlan.fPlannedTempo = now.fTempo;
}

void CTriggerClock::NoteLoop(const CClockSettings& now) noexcept {
    fPlan.fPlannedLoopStart = now.fLoopStart;
    fPlan.fPlannedLoopEnd = now.fLoopEnd;
}

// -- A running loop whose sync is switched on or whose loop range is moved --

void CTriggerClock::PlanIntoSync(int32_t position, Table table,
                                 const CClockSettings& now) noexcept {
    fPlan.fCurrentStart = NextStart(position, table, now);
    SetCurrentTime(EntryTime(fPlan.fCurrentStart, table, now));
    fPlan.fNextStart = NextStart(fPlan.fCurrentStart, table, now);
    fPlan.fFramesToNext = RoundToBlock(now.OutputTime(DistanceIntoSync(position, now), false));
    NoteTempos(now);
    fPlan.fSyncPending = true;
}

// Source frames that a free voice at `position` has to go to the range of fCurrentStart.
int64_t CTriggerClock::DistanceIntoSync(int32_t position,
                                        const CClockSettings& now) const noexcept {
    const int64_t target = fPlan.fCurrentStart;
    if (target > position) {
        return target - position;
    }
    if (position >= now.fLoopEnd) {
        return int64_t{now.fFrameCount} - position + target;
    }
    const int64_t skipped = target >= now.fLoopStart ? now.fLoopStart : 0;
    return int64_t{now.fLoopEnd} - position + target - skipped;
}

// The trigger of the range that PlanIntoSync chose; fNextStart stands behind it already. When the
// sync has gone off again meanwhile, the free voice just plays on.
CTriggered CTriggerClock::TriggerIntoSync(Table table, const CClockSettings& now) noexcept {
    fPlan.fSyncPending = false;
    fPlan.fSyncedNow = now.fIsSynced;
    if (!fPlan.fSyncedNow) {
        return {};
    }
    PlanNext(now);
    return {&table[CSliceTableLookup::FindRange(table, fPlan.fCurrentStart)], false};
}

// The next range was chosen with the old loop end. Where only the choice changes, the clock keeps
// the time that was planned: it comes right again at the next wrap.
void CTriggerClock::FollowMovedLoopEnd(Table table, const CClockSettings& now) noexcept {
    const int32_t end = now.fLoopEnd;
    const bool isWrap = fPlan.fNextStart <= fPlan.fCurrentStart;
    if (end < fPlan.fPlannedLoopEnd && fPlan.fCurrentStart >= end) {
        fPlan.fNextStart = NextStart(fPlan.fCurrentStart, table, now);
        SetCurrentTime(EntryTime(fPlan.fNextStart, table, now));
    } else if ((end > fPlan.fPlannedLoopEnd && isWrap) ||
               (end < fPlan.fPlannedLoopEnd && fPlan.fNextStart == end)) {
        fPlan.fNextStart = NextStart(fPlan.fCurrentStart, table, now);
    }
}

} // namespace NSLOPDLL

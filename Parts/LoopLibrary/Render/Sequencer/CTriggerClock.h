#pragma once

#include "LoopLibrary/Render/Sequencer/CClockSettings.h"
#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>
#include <span>

namespace NSLOPDLL {

/// Where a clock stands. "Source" values count frames of the wave sample, "output" values frames at
/// the output rate and the playing tempo.
struct CTriggerPlan {
    /// Source: start of the range to trigger next.
    int32_t fNextStart = 0;
    /// Source: start of the range triggered last.
    int32_t fCurrentStart = -1;
    /// Output: from the reference point to that trigger. The reference point is the loop start for
    /// ranges behind it and the start of the sample for those before.
    int32_t fCurrentTime = -1;
    /// Output: the gap planned up to the next trigger; joins fCurrentTime when that trigger comes.
    int32_t fLastGap = 0;
    /// Output: until the next trigger.
    int32_t fFramesToNext = 0;
    /// The tempos that the plan was made with.
    int32_t fPlannedLoopTempo = -1;
    int32_t fPlannedTempo = -1;
    /// Source: the loop range at the last trigger.
    int32_t fPlannedLoopStart = -1;
    int32_t fPlannedLoopEnd = -1;
    /// The triggers follow the tempo.
    bool fSyncedNow = false;
    /// A change into sync waits for its first trigger.
    bool fSyncPending = false;
};

/// What begins at a trigger: a range of the table, or else a free voice on the current start, or
/// nothing.
struct CTriggered {
    const CSlicePlayRange* fRange = nullptr; // borrowed from the table
    bool fIsFreeRun = false;
};

/// Decides which range of a slice table is triggered when, block by block. Every time is worked out
/// afresh as a distance from the reference point, so that rounding errors cannot add up, and two
/// triggers never share a block.
///
/// Knows neither locks nor audio: the owner hands in the settings of the moment and a table that is
/// sorted by fStart and not empty, and keeps threads apart.
class CTriggerClock {
public:
    using Table = std::span<const CSlicePlayRange>;

    /// The time of the entry at `start` from its reference point. Looks at every entry before it,
    /// since crowded ones push each other back: a million of them take milliseconds.
    static int32_t EntryTime(int32_t start, Table table, const CClockSettings& now) noexcept;

    const CTriggerPlan& GetPlan() const noexcept LOOP_REALTIME { return fPlan; }
    /// Where the next start begins, or where a running clock goes on.
    void SetNextStart(int32_t start) noexcept LOOP_REALTIME { fPlan.fNextStart = start; }

    /// Begins on the entry at `start`, whose EntryTime `time` is.
    void Start(int32_t start, int32_t time, Table table,
               const CClockSettings& now) noexcept LOOP_REALTIME;
    /// Brings the plan to the tempos of the moment: a change acts on the trigger already planned.
    void FollowTempo(const CClockSettings& now) noexcept LOOP_REALTIME;
    /// Moves on by a block; true when a trigger is due.
    bool CountBlock() noexcept LOOP_REALTIME;
    /// Goes on to the next range and plans the one after it.
    CTriggered Trigger(Table table, const CClockSettings& now) noexcept LOOP_REALTIME;

    /// A free voice plays, and nothing has been planned to end it.
    bool IsFree() const noexcept LOOP_REALTIME { return !fPlan.fSyncedNow && !fPlan.fSyncPending; }
    /// Plans the range that a free voice at `position` reaches next as the first to be triggered.
    /// Takes as long as EntryTime.
    void PlanIntoSync(int32_t position, Table table, const CClockSettings& now) noexcept;

private:
    void PlanNext(const CClockSettings& now) noexcept LOOP_REALTIME;
    void PlanForward(const CClockSettings& now) noexcept LOOP_REALTIME;
    void PlanWrap(const CClockSettings& now) noexcept LOOP_REALTIME;
    void SetCurrentTime(int32_t time) noexcept LOOP_REALTIME;
    void Rescale(int32_t numerator, int32_t denominator) noexcept LOOP_REALTIME;
    void NoteTempos(const CClockSettings& now) noexcept LOOP_REALTIME;
    void NoteLoop(const CClockSettings& now) noexcept LOOP_REALTIME;
    CTriggered VoiceOfCurrent(Table table, bool isSynced) noexcept LOOP_REALTIME;
    CTriggered TriggerIntoSync(Table table, const CClockSettings& now) noexcept LOOP_REALTIME;
    int64_t DistanceIntoSync(int32_t position, const CClockSettings& now) const noexcept;
    void FollowMovedLoopEnd(Table table, const CClockSettings& now) noexcept;

    CTriggerPlan fPlan;
};

} // namespace NSLOPDLL

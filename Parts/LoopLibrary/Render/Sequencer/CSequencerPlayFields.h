#pragma once

#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"

#include <cstdint>

namespace NSLOPDLL {

constexpr int32_t kPlayState_Idle = 0;
/// Stopped: the voices run out.
constexpr int32_t kPlayState_Released = 1;
/// The triggers go on.
constexpr int32_t kPlayState_Running = 2;
/// Nothing more is triggered: the last voice plays to its end.
constexpr int32_t kPlayState_RunningDown = 3;

constexpr int32_t kPlayCommand_None = 0;
constexpr int32_t kPlayCommand_Start = 1;
constexpr int32_t kPlayCommand_OneShot = 2;
constexpr int32_t kPlayCommand_Stop = 3;

/// Where a sequencer stands. "Source" values count frames of the wave sample, "output" values
/// frames at the sampler's rate and the playing tempo.
struct CSequencerPlayFields {
    int32_t fPlayState = kPlayState_Idle;
    /// Asked for by the control side and not yet taken by the render side. A later one replaces it.
    int32_t fCommand = kPlayCommand_None;
    CSlicePlayRange fCommandRange{};
    /// Source: start of the range to trigger next.
    int32_t fNextStart = 0;
    /// Source: where the sound is.
    int32_t fPlayPosition = 0;
    /// The current voice plays its body and not yet its tail.
    bool fVoiceSounding = false;
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

} // namespace NSLOPDLL

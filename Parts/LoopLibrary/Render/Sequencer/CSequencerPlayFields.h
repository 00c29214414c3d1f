#pragma once

#include "LoopLibrary/Render/Sequencer/CTriggerClock.h"
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

/// Where a sequencer stands.
struct CSequencerPlayFields {
    int32_t fPlayState = kPlayState_Idle;
    /// Asked for by the control side and not yet taken by the render side. A later one replaces it.
    int32_t fCommand = kPlayCommand_None;
    CSlicePlayRange fCommandRange{};
    /// Of a start: the clock's EntryTime of the range, which the control side works out, and again
    /// at each change before the render side takes the command.
    int32_t fCommandTime = 0;
    /// Source frame of the sound.
    int32_t fPlayPosition = 0;
    /// The current voice plays its body and not yet its tail.
    bool fVoiceSounding = false;
    CTriggerClock fClock;
};

} // namespace NSLOPDLL

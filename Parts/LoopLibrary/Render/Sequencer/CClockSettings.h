#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// All that trigger times follow from, as it stands at one moment. Tempos in thousandths of a beat
/// per minute.
struct CClockSettings {
    int32_t fTempo = 0;     // playing
    int32_t fLoopTempo = 0; // the loop's own; 0 for a loop of no length
    bool fIsSynced = false; // the triggers are to follow fTempo
    int32_t fSourceRate = 0;
    int32_t fOutputRate = 0;
    // Source frames.
    int32_t fLoopStart = 0;
    int32_t fLoopEnd = 0;
    uint32_t fFrameCount = 0;

    /// Output frames that `frames` of the source last, at the playing tempo or the loop's own.
    int32_t OutputTime(int64_t frames, bool useTempo) const noexcept LOOP_REALTIME;
    /// At the playing tempo if synced.
    int32_t OutputTime(int64_t frames) const noexcept LOOP_REALTIME {
        return OutputTime(frames, fIsSynced);
    }
    /// The same, rounded to a block.
    int32_t BlockTime(int64_t frames) const noexcept LOOP_REALTIME;
};

} // namespace NSLOPDLL

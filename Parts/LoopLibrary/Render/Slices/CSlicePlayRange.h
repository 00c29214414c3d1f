#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// A triggerable range of a wave sample, in source frames, with the region at its end between whose
/// two peaks a voice can go to and fro when the next trigger is late.
struct CSlicePlayRange {
    int32_t fStart = 0;
    int32_t fEnd = 0;       // frame behind the last
    int32_t fTailStart = 0; // first frame of the tail region
    int32_t fTailEnd = 0;   // where the tail region turns around
    /// Level at the tail's end over the level at its start; 1.0 without a tail.
    float fTailGain = 0.0F;

    friend bool operator==(const CSlicePlayRange&, const CSlicePlayRange&) = default;
};

static_assert(sizeof(CSlicePlayRange) == 20);

} // namespace NSLOPDLL

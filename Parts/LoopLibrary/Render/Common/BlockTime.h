#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

// Arithmetic of trigger times: whole frames, whole blocks, and at the limits of 32 bits the nearest
// value that fits. All of it is real-time safe.
namespace NSLOPDLL {

int32_t SaturateToInt32(int64_t value) noexcept LOOP_REALTIME;
/// Truncates toward zero; not-a-number gives 0.
int32_t SaturateToInt32(double value) noexcept LOOP_REALTIME;

/// The nearest multiple of 64, ties away from zero. A value too near the limits to be rounded
/// stays.
int32_t RoundToBlock(int32_t frames) noexcept LOOP_REALTIME;

/// The frames that `frames` of a source at `sourceRate` last at `outputRate`, rounded half up.
int32_t ScaleFrames(double frames, int32_t outputRate, int32_t sourceRate) noexcept LOOP_REALTIME;

/// `value` times `numerator` over `denominator`, truncated and then rounded to a block. A
/// denominator of 0 leaves the value alone.
int32_t RescaleToBlock(int32_t value, int32_t numerator,
                       int32_t denominator) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

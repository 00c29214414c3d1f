#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// Clips to -1.0 and 1.0 in place; a NaN stays.
void ClipSamples(float* samples, int32_t count) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

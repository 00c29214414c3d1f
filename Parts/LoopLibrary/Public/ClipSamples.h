#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Clips to -1.0 and 1.0 in place; a NaN stays. Real-time safe.
void ClipSamples(float* samples, int32_t count) noexcept;

} // namespace NSLOPDLL

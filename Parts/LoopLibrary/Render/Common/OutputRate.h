#pragma once

#include "Support/Threads/RealTime.h"

#include <algorithm>
#include <cstdint>

namespace NSLOPDLL {

/// Frames per second out. Rates are clipped to this range everywhere.
constexpr int32_t kOutputRate_Minimum = 11025;
constexpr int32_t kOutputRate_Maximum = 1000000;

constexpr int32_t ClipOutputRate(int32_t rate) noexcept LOOP_REALTIME {
    return std::clamp(rate, kOutputRate_Minimum, kOutputRate_Maximum);
}

} // namespace NSLOPDLL

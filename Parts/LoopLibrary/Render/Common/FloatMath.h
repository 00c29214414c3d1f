#pragma once

#include "Support/Threads/RealTime.h"

namespace NSLOPDLL {

// The float functions that the sound depends on, worked out in double and rounded to float once.
// The C library's own float forms are a last place off for a few arguments in a thousand, and which
// ones differs between systems and between processors. Nothing else here may call those forms.

/// `base` to the power of `exponent`.
float FloatPow(float base, float exponent) noexcept LOOP_REALTIME;
float FloatExp(float value) noexcept LOOP_REALTIME;
/// The natural logarithm.
float FloatLog(float value) noexcept;
/// `angle` in radians.
float FloatCos(float angle) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Truncates toward zero what lies within the limits and clips the rest; not-a-number gives 0. The
/// clip comes before the conversion, which has no meaning beyond 32 bits.
inline int32_t ClipToInteger(float value, float least, float most) noexcept {
    const float number = value == value ? value : 0.0F;
    const float notAbove = number > most ? most : number;
    return static_cast<int32_t>(notAbove < least ? least : notAbove);
}

/// A normalized float as an integer of a depth, rounded half away from zero.
inline int32_t RoundToInteger(float value, float scale, float least, float most) noexcept {
    const float scaled = value * scale;
    return ClipToInteger(value < 0.0F ? scaled - 0.5F : scaled + 0.5F, least, most);
}

/// A float in 24-bit scale as a 24-bit integer.
inline int32_t TruncateTo24Bit(float value) noexcept {
    return ClipToInteger(value, -8388608.0F, 8388607.0F);
}

} // namespace NSLOPDLL

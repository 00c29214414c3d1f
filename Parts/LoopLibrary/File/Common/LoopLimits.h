#pragma once

#include <algorithm>
#include <cstdint>

namespace NSLOPDLL {

// The ranges that the sequencer and its devices are given whatever a file says.

inline int16_t ClampTo16(int32_t value, int16_t least, int16_t greatest) {
    return static_cast<int16_t>(std::clamp<int32_t>(value, least, greatest));
}

/// Thousandths of a beat per minute.
inline int32_t ClampTempo(int32_t tempo) {
    return std::clamp(tempo, 20000, 450000);
}

inline int32_t ClampBars(int32_t bars) {
    return std::clamp(bars, 0, 999);
}

inline int32_t ClampBeats(int32_t beats) {
    return std::clamp(beats, 0, 7);
}

/// Either part of a time signature.
inline int32_t ClampSignaturePart(int32_t value) {
    return std::clamp(value, 1, 15);
}

/// Cents.
inline int16_t ClampTranspose(int32_t cents) {
    return ClampTo16(cents, -2400, 2400);
}

} // namespace NSLOPDLL

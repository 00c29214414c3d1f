// Four-character ids: 32-bit values whose first character is the most significant byte.
#pragma once

#include <cstdint>

namespace NSPorter {

constexpr uint32_t FourCharID(const char (&text)[5]) {
    uint32_t id = 0;
    for (int i = 0; i < 4; ++i) {
        id = (id << 8) | static_cast<uint8_t>(text[i]);
    }
    return id;
}

/// Printable ASCII that does not begin with a blank.
constexpr bool IsValidFourCharID(uint32_t id) {
    const uint32_t first = id >> 24;
    bool valid = first >= 33 && first <= 126;
    for (int shift = 16; shift >= 0; shift -= 8) {
        const uint32_t character = (id >> shift) & 255;
        valid = valid && character >= 32 && character <= 126;
    }
    return valid;
}

} // namespace NSPorter

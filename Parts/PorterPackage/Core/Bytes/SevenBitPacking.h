// Packing for data that must stay clear of the top bit: seven bytes become eight. The first seven
// keep the low seven bits, in order; bit 6 - i of the eighth holds the top bit of byte i.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace NSPorter {

/// Whole groups of eight; the last group is filled up with zero bytes.
size_t GetSevenBitPackedSize(size_t sourceSize);
std::vector<uint8_t> PackSevenBit(std::span<const uint8_t> source);

/// Gives `length` bytes. Raises XFormatViolation when `packed` holds fewer groups than that takes.
std::vector<uint8_t> UnpackSevenBit(std::span<const uint8_t> packed, size_t length);

} // namespace NSPorter

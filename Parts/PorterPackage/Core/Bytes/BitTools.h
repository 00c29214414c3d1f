// Single bits, flags and plain searches in byte arrays.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace NSPorter {

/// Bits 0 to 31, 0 the least significant.
constexpr uint32_t BitMask(int bit) {
    return uint32_t{1} << bit;
}
constexpr bool TestBit(uint32_t value, int bit) {
    return (value & BitMask(bit)) != 0;
}
constexpr int CountBits(uint32_t value) {
    return std::popcount(value);
}
/// True for 0 and for the powers of two.
constexpr bool HasAtMostOneBit(uint32_t value) {
    return (value & (value - 1)) == 0;
}

/// Files store false as 0 and true as anything else.
constexpr bool FlagFromByte(uint32_t byte) {
    return byte != 0;
}

/// Flag i becomes bit i. Flags beyond 32 are dropped.
constexpr uint32_t GatherFlags(std::span<const uint8_t> flags) {
    uint32_t mask = 0;
    for (size_t i = 0; i < flags.size() && i < 32; ++i) {
        mask |= FlagFromByte(flags[i]) ? BitMask(static_cast<int>(i)) : 0;
    }
    return mask;
}

/// The first flag becomes bit 7.
constexpr uint8_t PackEightFlags(std::span<const uint8_t, 8> flags) {
    uint32_t packed = 0;
    for (const uint8_t flag : flags) {
        packed = (packed << 1) | (FlagFromByte(flag) ? 1U : 0U);
    }
    return static_cast<uint8_t>(packed);
}

/// Modulo 2^32.
constexpr uint32_t SumBytes(std::span<const uint8_t> bytes) {
    uint32_t sum = 0;
    for (const uint8_t byte : bytes) {
        sum += byte;
    }
    return sum;
}

/// The index of the first such byte, -1 if there is none.
constexpr ptrdiff_t FindByte(std::span<const uint8_t> bytes, uint8_t wanted) {
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == wanted) {
            return static_cast<ptrdiff_t>(i);
        }
    }
    return -1;
}

} // namespace NSPorter

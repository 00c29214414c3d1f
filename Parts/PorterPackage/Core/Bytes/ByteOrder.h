// Takes integers apart and joins them. Nothing here depends on the host's byte order but the two
// functions that say so.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace NSPorter {

constexpr uint16_t JoinBytes(uint8_t high, uint8_t low) {
    return static_cast<uint16_t>((high << 8) | low);
}
constexpr uint32_t JoinWords(uint16_t high, uint16_t low) {
    return (uint32_t{high} << 16) | low;
}
constexpr uint64_t JoinLongs(uint32_t high, uint32_t low) {
    return (uint64_t{high} << 32) | low;
}

constexpr uint8_t HighNibble(uint8_t value) {
    return static_cast<uint8_t>(value >> 4);
}
constexpr uint8_t LowNibble(uint8_t value) {
    return static_cast<uint8_t>(value & 15);
}
constexpr uint8_t HighByte(uint16_t value) {
    return static_cast<uint8_t>(value >> 8);
}
constexpr uint8_t LowByte(uint16_t value) {
    return static_cast<uint8_t>(value);
}
constexpr uint16_t HighWord(uint32_t value) {
    return static_cast<uint16_t>(value >> 16);
}
constexpr uint16_t LowWord(uint32_t value) {
    return static_cast<uint16_t>(value);
}
constexpr uint32_t HighLong(uint64_t value) {
    return static_cast<uint32_t>(value >> 32);
}
constexpr uint32_t LowLong(uint64_t value) {
    return static_cast<uint32_t>(value);
}
/// Index 0 is the most significant byte. Indices 0 to 3.
constexpr uint8_t ByteOf(uint32_t value, int index) {
    return static_cast<uint8_t>(value >> (24 - 8 * index));
}

/// First byte most significant.
constexpr std::array<uint8_t, 4> SplitBytes(uint32_t value) {
    return {ByteOf(value, 0), ByteOf(value, 1), ByteOf(value, 2), ByteOf(value, 3)};
}
constexpr std::array<uint8_t, 2> SplitNibblesHighFirst(uint8_t value) {
    return {HighNibble(value), LowNibble(value)};
}
constexpr std::array<uint8_t, 2> SplitNibblesLowFirst(uint8_t value) {
    return {LowNibble(value), HighNibble(value)};
}

/// The two decimal digits of a byte, tens in the high nibble.
constexpr uint8_t DecodeBCD(uint8_t value) {
    return static_cast<uint8_t>(HighNibble(value) * 10 + LowNibble(value));
}

/// Four stored bytes as a value, and back.
constexpr uint32_t DecodeBigEndian(const uint8_t* bytes) {
    return JoinWords(JoinBytes(bytes[0], bytes[1]), JoinBytes(bytes[2], bytes[3]));
}
constexpr uint32_t DecodeLittleEndian(const uint8_t* bytes) {
    return JoinWords(JoinBytes(bytes[3], bytes[2]), JoinBytes(bytes[1], bytes[0]));
}
constexpr void EncodeBigEndian(uint32_t value, uint8_t* bytes) {
    for (int i = 0; i < 4; ++i) {
        bytes[i] = ByteOf(value, i);
    }
}
constexpr void EncodeLittleEndian(uint32_t value, uint8_t* bytes) {
    for (int i = 0; i < 4; ++i) {
        bytes[3 - i] = ByteOf(value, i);
    }
}
/// In the order of the host.
constexpr uint32_t DecodeNative(const uint8_t* bytes) {
    return std::endian::native == std::endian::big ? DecodeBigEndian(bytes)
                                                   : DecodeLittleEndian(bytes);
}
constexpr void EncodeNative(uint32_t value, uint8_t* bytes) {
    if (std::endian::native == std::endian::big) {
        EncodeBigEndian(value, bytes);
    } else {
        EncodeLittleEndian(value, bytes);
    }
}

} // namespace NSPorter

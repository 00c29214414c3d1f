// What single units of UTF-16 and bytes of UTF-8 are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace NSTextPackage {

constexpr uint32_t kFirstHighSurrogate = 0xD800;
constexpr uint32_t kFirstLowSurrogate = 0xDC00;
constexpr uint32_t kBehindSurrogates = 0xE000;
/// The first code point that takes two units.
constexpr uint32_t kFirstPairedCodePoint = 0x10000;

/// The first unit of a pair.
constexpr bool IsHighSurrogate(uint32_t unit) {
    return unit >= kFirstHighSurrogate && unit < kFirstLowSurrogate;
}
/// The second unit of a pair.
constexpr bool IsLowSurrogate(uint32_t unit) {
    return unit >= kFirstLowSurrogate && unit < kBehindSurrogates;
}
/// Whether a pair begins at the index; false beyond the end.
constexpr bool IsPairAt(std::u16string_view text, size_t index) {
    return index + 1 < text.size() && IsHighSurrogate(text[index]) &&
           IsLowSurrogate(text[index + 1]);
}
constexpr uint32_t JoinPair(char16_t high, char16_t low) {
    return kFirstPairedCodePoint + ((high - kFirstHighSurrogate) << 10) +
           (low - kFirstLowSurrogate);
}

/// A byte behind the first one of a UTF-8 sequence.
constexpr bool IsContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace NSTextPackage

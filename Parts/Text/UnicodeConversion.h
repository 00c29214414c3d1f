// Conversions between the system's two text forms, UTF-8 and UTF-16, and plain ASCII.
//
// The decoders read what older writers produced and are looser than Unicode: continuation bytes and
// low surrogates are taken unseen. What they do refuse is XFormatViolation with the target word
// "unicode"; broken text is never repaired. All functions are pure and may run on any thread.
#pragma once

#include <cstdint>
#include <string>

namespace NSTextPackage {

constexpr uint32_t kHighestCodePoint = 0x10FFFF;

/// A lone low surrogate raises "High-surrogate missing! Broken Unicode". A high surrogate combines
/// with whatever unit follows it, at the very end of the text with 0. `limit` states the greatest
/// code point that the caller expects; it does not narrow what is written.
std::string Utf16ToUtf8(const std::u16string& text, uint32_t limit = kHighestCodePoint);

/// As Utf16ToUtf8, behind the mark EF BB BF when `withMark`.
std::string Utf16ToUtf8WithMark(const std::u16string& text, bool withMark);

/// Reads sequences of one to seven bytes. A byte that starts no sequence (10xxxxxx, FF) and a
/// sequence that the end of the text cuts off are refused; a value from 0x10000 up becomes two
/// units, each cut to 16 bits. Nothing is ever replaced: `replacement` has no effect.
std::u16string Utf8ToUtf16(const std::string& text, const std::string& replacement);
std::u16string Utf8ToUtf16Default(const std::string& text);

/// Bytes above 127 stand for the code point of the same value, or are refused without `allowHigh`.
std::u16string AsciiToUtf16(const std::string& text, bool allowHigh);

/// Units above 127 become `replacement`.
std::string Utf16ToAscii(const std::u16string& text, char replacement);

/// One unit below 0x10000, otherwise two.
void AppendCodePoint(uint32_t codePoint, std::u16string& text);

/// One to four bytes. The four-byte form goes on beyond Unicode's end; 0x400000 and above raises
/// "Character code bigger than max Unicode".
void AppendCodePointAsUtf8(uint32_t codePoint, std::string& text);

} // namespace NSTextPackage

#include "Text/UnicodeConversion.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "Text/CodeUnits.h"

#include <cstddef>

namespace NSTextPackage {

using NSLichen::RaiseWithTarget;
using NSLichen::UnicodeWord;
using NSLichen::XFormatViolation;

namespace {

// The number of bytes of the sequence that `lead` starts, 0 for a byte that starts none.
size_t SequenceLength(uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (IsContinuationByte(static_cast<char>(lead)) || lead == 0xFF) {
        return 0;
    }
    size_t length = 2;
    while (length < 7 && (lead & (0x80U >> length)) != 0) {
        ++length;
    }
    return length;
}

// 64 bits, since the seven-byte form carries 36.
uint64_t DecodeSequence(const char* bytes, size_t length) {
    const auto lead = static_cast<uint8_t>(bytes[0]);
    if (length == 1) {
        return lead;
    }
    uint64_t value = lead & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        value = (value << 6) | (static_cast<uint8_t>(bytes[i]) & 0x3FU);
    }
    return value;
}

void AppendUnits(uint64_t value, std::u16string& text) {
    if (value < kFirstPairedCodePoint) {
        text.push_back(static_cast<char16_t>(value));
        return;
    }
    text.push_back(
        static_cast<char16_t>(((value - kFirstPairedCodePoint) >> 10) + kFirstHighSurrogate));
    text.push_back(static_cast<char16_t>((value & 0x3FF) + kFirstLowSurrogate));
}

} // namespace

void AppendCodePointAsUtf8(uint32_t codePoint, std::string& text) {
    const auto append = [&text](uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto continuation = [&](int shift) { append(0x80 | ((codePoint >> shift) & 0x3F)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
        continuation(0);
    } else if (codePoint < 0x10000) {
        append(0xE0 | (codePoint >> 12));
        continuation(6);
        continuation(0);
    } else if (codePoint < 0x400000) {
        append(0xF0 | (codePoint >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    } else {
        RaiseWithTarget(XFormatViolation("Character code bigger than max Unicode"), UnicodeWord());
    }
}

namespace {

// Behind what `result` holds.
void AppendUtf16AsUtf8(const std::u16string& text, std::string& result) {
    // No unit takes more than three bytes, except for a high surrogate at the very end.
    result.reserve(result.size() + text.size() * 3 + 1);
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        uint32_t codePoint = unit;
        if (IsLowSurrogate(unit)) {
            RaiseWithTarget(XFormatViolation("High-surrogate missing! Broken Unicode"),
                            UnicodeWord());
        }
        if (IsHighSurrogate(unit)) {
            ++i;
            const char16_t next = i < text.size() ? text[i] : u'\0';
            codePoint = ((codePoint - 0xD7F7U) << 10) + next;
        }
        AppendCodePointAsUtf8(codePoint, result);
    }
}

} // namespace

std::string Utf16ToUtf8(const std::u16string& text, [[maybe_unused]] uint32_t limit) {
    std::string result;
    AppendUtf16AsUtf8(text, result);
    return result;
}

std::string Utf16ToUtf8WithMark(const std::u16string& text, bool withMark) {
    std::string result = withMark ? "\xEF\xBB\xBF" : "";
    AppendUtf16AsUtf8(text, result);
    return result;
}

std::u16string Utf8ToUtf16(const std::string& text,
                           [[maybe_unused]] const std::string& replacement) {
    std::u16string result;
    if (text.empty()) {
        return result;
    }
    result.reserve(text.size() + 1);
    for (size_t position = 0; position < text.size();) {
        const size_t length = SequenceLength(static_cast<uint8_t>(text[position]));
        if (length == 0 || length > text.size() - position) {
            RaiseWithTarget(XFormatViolation(""), UnicodeWord());
        }
        AppendUnits(DecodeSequence(text.data() + position, length), result);
        position += length;
    }
    return result;
}

std::u16string Utf8ToUtf16Default(const std::string& text) {
    return Utf8ToUtf16(text, "?");
}

std::u16string AsciiToUtf16(const std::string& text, bool allowHigh) {
    std::u16string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<uint8_t>(character);
        if (byte > 127 && !allowHigh) {
            RaiseWithTarget(XFormatViolation(""), UnicodeWord());
        }
        AppendCodePoint(byte, result);
    }
    return result;
}

std::string Utf16ToAscii(const std::u16string& text, char replacement) {
    std::string result;
    result.reserve(text.size());
    for (const char16_t unit : text) {
        result.push_back(unit > 127 ? replacement : static_cast<char>(unit));
    }
    return result;
}

void AppendCodePoint(uint32_t codePoint, std::u16string& text) {
    AppendUnits(codePoint, text);
}

} // namespace NSTextPackage

#include "looptool/Console/SafeText.h"

#include <algorithm>
#include <cstdint>

namespace NSLoopTool {

namespace {

struct SCharacter {
    size_t fBytes = 0; // 0: not UTF-8
    uint32_t fCode = 0;
};

bool IsContinuation(char byte) {
    return (static_cast<uint8_t>(byte) & 0xC0U) == 0x80;
}

SCharacter CharacterAt(const std::string& text, size_t at) {
    const auto lead = static_cast<uint8_t>(text[at]);
    if (lead < 0x80) {
        return {1, lead};
    }
    const size_t bytes = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || at + bytes > text.size()) {
        return {};
    }
    uint32_t code = lead & (0xFFU >> (bytes + 1));
    for (size_t i = 1; i < bytes; ++i) {
        if (!IsContinuation(text[at + i])) {
            return {};
        }
        code = code << 6 | (static_cast<uint8_t>(text[at + i]) & 0x3FU);
    }
    constexpr uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isValid =
        code >= kLeast[bytes] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    return isValid ? SCharacter{bytes, code} : SCharacter{};
}

std::string Hex(const char* prefix, size_t digits, uint32_t value) {
    std::string text = prefix;
    for (size_t i = digits; i > 0; --i) {
        text += "0123456789ABCDEF"[value >> (4 * (i - 1)) & 0xF];
    }
    return text;
}

std::string Escape(uint32_t code) {
    switch (code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return code < 0x100 ? Hex("\\x", 2, code) : Hex("\\u", 4, code);
    }
}

// Characters that act on a terminal or turn the direction of what follows.
bool IsControl(uint32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

} // namespace

std::string SafeText(const std::string& text) {
    std::string safe;
    for (size_t at = 0; at < text.size();) {
        const SCharacter character = CharacterAt(text, at);
        if (character.fBytes == 0) {
            safe += Hex("\\x", 2, static_cast<uint8_t>(text[at]));
            ++at;
            continue;
        }
        safe += IsControl(character.fCode) ? Escape(character.fCode)
                                           : text.substr(at, character.fBytes);
        at += character.fBytes;
    }
    return safe;
}

size_t TextWidth(const std::string& text) {
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuation(byte); }));
}

std::string KeepEnd(const std::string& text, size_t columns) {
    const size_t width = TextWidth(text);
    if (width <= columns) {
        return text;
    }
    const std::string dots = "...";
    size_t drop = width - columns + std::min(columns, dots.size());
    size_t at = 0;
    for (; at < text.size() && (drop > 0 || IsContinuation(text[at])); ++at) {
        if (!IsContinuation(text[at])) {
            --drop;
        }
    }
    return dots.substr(0, columns) + text.substr(at);
}

} // namespace NSLoopTool

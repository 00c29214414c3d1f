#include "FileLib/Rules/PosixNameCodec.h"

#include "FileLib/Rules/PathRules.h"
#include "Text/CodeUnits.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace NSFileLibInternals {

namespace {

constexpr uint32_t kEscapeBase = 0xF000;

char16_t Escape(char byte) {
    return static_cast<char16_t>(kEscapeBase + static_cast<unsigned char>(byte));
}

bool IsEscape(uint32_t codePoint) {
    return codePoint >= kEscapeBase && codePoint <= kEscapeBase + 0xFF;
}

struct SCodePoint {
    uint32_t fValue;
    size_t fLength; // bytes; 0 when the text does not begin with well-formed UTF-8
};

// Shortest form only, no surrogates, at most 0x10FFFF: all that the way back restores as it was.
SCodePoint DecodeUtf8(std::string_view text) {
    struct SForm {
        unsigned char fMask, fLead;
        size_t fLength;
        uint32_t fLeast;
    };
    static constexpr SForm kForms[] = {{0x80, 0x00, 1, 0},
                                       {0xE0, 0xC0, 2, 0x80},
                                       {0xF0, 0xE0, 3, 0x800},
                                       {0xF8, 0xF0, 4, 0x10000}};
    const auto lead = static_cast<unsigned char>(text[0]);
    for (const SForm& form : kForms) {
        if ((lead & form.fMask) != form.fLead || form.fLength > text.size()) {
            continue;
        }
        uint32_t value = lead & ~static_cast<uint32_t>(form.fMask) & 0xFFU;
        for (size_t i = 1; i < form.fLength; ++i) {
            if (!NSTextPackage::IsContinuationByte(text[i])) {
                return {0, 0};
            }
            value = (value << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
        }
        const bool isSurrogate =
            NSTextPackage::IsHighSurrogate(value) || NSTextPackage::IsLowSurrogate(value);
        const bool isGood = value >= form.fLeast && value <= 0x10FFFF && !isSurrogate;
        return isGood ? SCodePoint{value, form.fLength} : SCodePoint{0, 0};
    }
    return {0, 0};
}

bool MustEscape(const SCodePoint& point) {
    return point.fLength == 0 || point.fValue == 0 || IsEscape(point.fValue) ||
           (point.fValue < 0x80 && IsForbiddenCharacter(static_cast<char16_t>(point.fValue)));
}

} // namespace

std::u16string NativeNameFromPosix(const std::string& name) {
    std::u16string text;
    text.reserve(name.size());
    for (size_t i = 0; i < name.size();) {
        const SCodePoint point = DecodeUtf8(std::string_view(name).substr(i));
        const size_t length = point.fLength == 0 ? 1 : point.fLength;
        if (MustEscape(point)) {
            for (const char byte : std::string_view(name).substr(i, length)) {
                text += Escape(byte);
            }
        } else {
            NSTextPackage::AppendCodePoint(point.fValue, text);
        }
        i += length;
    }
    if (!text.empty() && (text.back() == u'.' || text.back() == u' ')) {
        text.back() = Escape(name.back());
    }
    if (IsReservedName(text)) {
        text.front() = Escape(name.front());
    }
    return text;
}

std::string PosixNameFromNative(const std::u16string& name) {
    std::string bytes;
    bytes.reserve(name.size());
    for (size_t i = 0; i < name.size(); ++i) {
        uint32_t value = name[i];
        if (IsEscape(value)) {
            bytes += static_cast<char>(value - kEscapeBase);
        } else {
            if (NSTextPackage::IsPairAt(name, i)) {
                value = NSTextPackage::JoinPair(name[i], name[i + 1]);
                ++i;
            }
            NSTextPackage::AppendCodePointAsUtf8(value, bytes);
        }
    }
    // Neither can stand in a name; as part of a path they would name something else.
    const bool isName =
        bytes.find('/') == std::string::npos && bytes.find('\0') == std::string::npos;
    return isName ? bytes : std::string();
}

std::u16string NativeFromPosix(const std::string& path) {
    std::u16string text = u"C:";
    for (size_t i = 0; i < path.size();) {
        const size_t begin = path.find_first_not_of('/', i);
        if (begin == std::string::npos) {
            break;
        }
        const size_t end = std::min(path.find('/', begin), path.size());
        text += u'\\' + NativeNameFromPosix(path.substr(begin, end - begin));
        i = end;
    }
    if (text.size() == 2 || path.ends_with('/')) {
        text += u'\\';
    }
    return text;
}

std::string PosixFromNative(const std::u16string& path) {
    const bool isOnVolume = path.size() >= 3 && (path[0] == u'C' || path[0] == u'c') &&
                            path[1] == u':' && path[2] == u'\\';
    if (!isOnVolume) {
        return {};
    }
    std::string bytes;
    for (size_t i = 2; i < path.size();) {
        const size_t end = std::min(path.find(u'\\', i + 1), path.size());
        const std::u16string component = path.substr(i + 1, end - i - 1);
        const std::string name = PosixNameFromNative(component);
        if (name.empty() && !component.empty()) {
            return {};
        }
        if (!name.empty() || end == path.size()) {
            bytes += '/' + name;
        }
        i = end;
    }
    return bytes;
}

} // namespace NSFileLibInternals

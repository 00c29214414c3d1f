#include "Text/CodePage.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "Text/PlatformText.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace NSTextPackage {

namespace {

// Code page 1252 differs from Latin-1 in these 32 bytes only.
constexpr uint8_t kFirstSpecialByte = 0x80;
constexpr std::array<char16_t, 32> kSpecialUnits = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsSpecialByte(uint32_t byte) {
    return byte >= kFirstSpecialByte && byte < kFirstSpecialByte + kSpecialUnits.size();
}

char Cp1252Byte(char16_t unit, char replacement) {
    if (unit <= 0xFF && !IsSpecialByte(unit)) {
        return static_cast<char>(unit);
    }
    const auto* const found = std::find(kSpecialUnits.begin(), kSpecialUnits.end(), unit);
    if (found == kSpecialUnits.end()) {
        return replacement;
    }
    return static_cast<char>(kFirstSpecialByte + std::distance(kSpecialUnits.begin(), found));
}

} // namespace

std::u16string CodePageToUtf16(const std::string& text, uint32_t codePage) {
    if (codePage == kCodePage_1252) {
        return Cp1252ToUtf16(text);
    }
    std::u16string result;
    if (!text.empty() && !PlatformDecodeCodePage(text, codePage, result)) {
        NSLichen::RaiseWithTarget(NSLichen::XFormatViolation(""), NSLichen::UnicodeWord());
    }
    return result;
}

std::u16string Cp1252ToUtf16(const std::string& text) {
    std::u16string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<uint8_t>(character);
        result.push_back(IsSpecialByte(byte) ? kSpecialUnits[byte - kFirstSpecialByte] : byte);
    }
    return result;
}

std::string Utf16ToCp1252(const std::u16string& text, char replacement) {
    std::string result;
    result.reserve(text.size());
    for (const char16_t unit : text) {
        result.push_back(Cp1252Byte(unit, replacement));
    }
    return result;
}

} // namespace NSTextPackage

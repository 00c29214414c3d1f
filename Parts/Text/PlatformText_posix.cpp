#include "Text/PlatformText.h"

#include "Text/CCollationCursor.h"

#include <iconv.h>

#include <algorithm>

namespace NSTextPackage {

namespace {

constexpr int kLess = 1;
constexpr int kEqual = 2;
constexpr int kGreater = 3;

using LevelWeight = uint32_t SCollationElement::*;

// The next weight that takes part in the level, 0 at the end.
uint32_t NextWeight(CCollationCursor& cursor, LevelWeight level) {
    SCollationElement element;
    while (cursor.Next(element)) {
        if (element.*level != 0) {
            return element.*level;
        }
    }
    return 0;
}

int CompareLevel(std::u16string_view a, std::u16string_view b, LevelWeight level) {
    CCollationCursor cursorA(a);
    CCollationCursor cursorB(b);
    for (;;) {
        const uint32_t weightA = NextWeight(cursorA, level);
        const uint32_t weightB = NextWeight(cursorB, level);
        if (weightA != weightB) {
            return weightA < weightB ? kLess : kGreater;
        }
        if (weightA == 0) {
            return kEqual;
        }
    }
}

// Code pages that iconv does not call "CP" and the number.
std::string EncodingName(uint32_t codePage) {
    switch (codePage) {
    case 20127:
        return "ASCII";
    case 65001:
        return "UTF-8";
    default:
        break;
    }
    if (codePage >= 28591 && codePage <= 28606) {
        return "ISO-8859-" + std::to_string(codePage - 28590);
    }
    return "CP" + std::to_string(codePage);
}

} // namespace

int PlatformCompareText(std::u16string_view a, std::u16string_view b, bool ignoreCase,
                        bool ignoreMarks) {
    int result = CompareLevel(a, b, &SCollationElement::fPrimary);
    if (result == kEqual && !ignoreMarks) {
        result = CompareLevel(a, b, &SCollationElement::fSecondary);
    }
    if (result == kEqual && !ignoreCase) {
        result = CompareLevel(a, b, &SCollationElement::fTertiary);
    }
    return result;
}

void PlatformLowerUtf16(std::u16string& text) {
    std::transform(text.begin(), text.end(), text.begin(), LowerUnit);
}

bool PlatformDecodeCodePage(const std::string& text, uint32_t codePage, std::u16string& result) {
    const std::string encoding = EncodingName(codePage);
    std::string bytes(text.size() * 3 * sizeof(char16_t), '\0');
    // Nothing may throw while the converter is open.
    const iconv_t converter = iconv_open("UTF-16LE", encoding.c_str());
    if (reinterpret_cast<intptr_t>(converter) == -1) {
        return false;
    }
    char* source = const_cast<char*>(text.data());
    size_t sourceLeft = text.size();
    char* target = bytes.data();
    size_t targetLeft = bytes.size();
    const size_t converted = iconv(converter, &source, &sourceLeft, &target, &targetLeft);
    iconv_close(converter);
    if (converted == static_cast<size_t>(-1)) {
        return false;
    }
    const size_t units = (bytes.size() - targetLeft) / sizeof(char16_t);
    result.resize(units);
    for (size_t i = 0; i < units; ++i) {
        const auto low = static_cast<uint8_t>(bytes[2 * i]);
        const auto high = static_cast<uint8_t>(bytes[2 * i + 1]);
        result[i] = static_cast<char16_t>(low | (high << 8));
    }
    return true;
}

} // namespace NSTextPackage

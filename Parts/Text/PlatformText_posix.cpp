#include "Text/PlatformText.h"

#include "Text/CCollationCursor.h"

#include <iconv.h>

#include <algorithm>
#include <locale>

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

struct SCodePageName {
    uint32_t fCodePage;
    char fName[20]; // no pointer, which every load would relocate
};

// Code pages that iconv does not call "CP" and the number.
constexpr SCodePageName kCodePageNames[] = {
    {37, "CP037"},          {708, "ASMO-708"},
    {1200, "UTF-16LE"},     {1201, "UTF-16BE"},
    {10000, "MACINTOSH"},   {10007, "MAC-CYRILLIC"},
    {10017, "MAC-UK"},      {10029, "MAC-CENTRALEUROPE"},
    {10079, "MAC-IS"},      {12000, "UTF-32LE"},
    {12001, "UTF-32BE"},    {20127, "ASCII"},
    {20261, "T.61"},        {20269, "ISO_6937"},
    {20273, "IBM273"},      {20277, "IBM277"},
    {20278, "IBM278"},      {20280, "IBM280"},
    {20284, "IBM284"},      {20285, "IBM285"},
    {20290, "IBM290"},      {20297, "IBM297"},
    {20420, "IBM420"},      {20423, "IBM423"},
    {20424, "IBM424"},      {20866, "KOI8-R"},
    {20871, "IBM871"},      {20880, "IBM880"},
    {20905, "IBM905"},      {20932, "EUC-JP"},
    {20936, "EUC-CN"},      {20949, "EUC-KR"},
    {21025, "IBM1025"},     {21866, "KOI8-U"},
    {38598, "ISO-8859-8"},  {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP"}, {50222, "ISO-2022-JP"},
    {50225, "ISO-2022-KR"}, {50227, "ISO-2022-CN"},
    {51932, "EUC-JP"},      {51936, "EUC-CN"},
    {51949, "EUC-KR"},      {51950, "EUC-TW"},
    {54936, "GB18030"},     {65000, "UTF-7"},
    {65001, "UTF-8"},
};

std::string EncodingName(uint32_t codePage) {
    for (const SCodePageName& name : kCodePageNames) {
        if (name.fCodePage == codePage) {
            return name.fName;
        }
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
    // The unit beyond three for each byte is for what the converter holds back to the end.
    std::string bytes((text.size() * 3 + 1) * sizeof(char16_t), '\0');
    // Nothing may throw while the converter is open.
    const iconv_t converter = iconv_open("UTF-16LE", encoding.c_str());
    if (reinterpret_cast<intptr_t>(converter) == -1) {
        return false;
    }
    char* source = const_cast<char*>(text.data());
    size_t sourceLeft = text.size();
    char* target = bytes.data();
    size_t targetLeft = bytes.size();
    constexpr auto kRefused = static_cast<size_t>(-1);
    // Without a source it gives what it held back: the last letter, which a mark could have
    // changed.
    const bool isConverted =
        iconv(converter, &source, &sourceLeft, &target, &targetLeft) != kRefused &&
        iconv(converter, nullptr, nullptr, &target, &targetLeft) != kRefused;
    iconv_close(converter);
    if (!isConverted) {
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

SNumberSigns PlatformNumberSigns(const std::string& localeName) {
    // The locale owns the facet, which raises for an unknown name.
    const std::locale locale(std::locale::classic(), new std::numpunct_byname<wchar_t>(localeName));
    const auto& facet = std::use_facet<std::numpunct<wchar_t>>(locale);
    return {facet.decimal_point(), facet.thousands_sep()};
}

} // namespace NSTextPackage

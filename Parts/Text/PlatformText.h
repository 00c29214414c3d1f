// What the system must offer for text; one home for each platform.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace NSTextPackage {

/// 1, 2 and 3 for less, equal and greater; 0 for a failure of the system's call.
int PlatformCompareText(std::u16string_view a, std::u16string_view b, bool ignoreCase,
                        bool ignoreMarks);

void PlatformLowerUtf16(std::u16string& text);

/// Any code page but 1252, and no empty text. False for text that the code page does not hold or a
/// code page that the system does not know.
bool PlatformDecodeCodePage(const std::string& text, uint32_t codePage, std::u16string& result);

struct SNumberSigns {
    wchar_t fDecimalPoint = L'.';
    wchar_t fGroupSeparator = L',';
};
/// Those of a named locale, by the system's names for locales; "C" and "POSIX" are known
/// everywhere, and the empty name is the user's own. Raises std::runtime_error for a name that the
/// system does not know.
SNumberSigns PlatformNumberSigns(const std::string& localeName);

} // namespace NSTextPackage

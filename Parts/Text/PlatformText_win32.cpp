#include "Text/PlatformText.h"

#include "Failure/Raising/Raise.h"
#include "Text/UnicodeConversion.h"

#include <windows.h>

#include <limits>
#include <stdexcept>

namespace NSTextPackage {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

const wchar_t* Wide(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

bool FitsInt(size_t length) {
    return length <= static_cast<size_t>(std::numeric_limits<int>::max() / 3);
}

} // namespace

int PlatformCompareText(std::u16string_view a, std::u16string_view b, bool ignoreCase,
                        bool ignoreMarks) {
    if (!FitsInt(a.size()) || !FitsInt(b.size())) {
        return 0;
    }
    // NORM_IGNOREWIDTH and SORT_STRINGSORT. Callers have sorted by these numbers all along, so 8
    // stays for the marks although the system counts digits by it.
    DWORD flags = 0x21000;
    if (ignoreCase) {
        flags |= 1;
    }
    if (ignoreMarks) {
        flags |= 8;
    }
    return CompareStringEx(LOCALE_NAME_INVARIANT, flags, Wide(a.data()), static_cast<int>(a.size()),
                           Wide(b.data()), static_cast<int>(b.size()), nullptr, nullptr, 0);
}

void PlatformLowerUtf16(std::u16string& text) {
    size_t done = 0;
    while (done < text.size()) {
        // The call counts in 32 bits.
        constexpr size_t kMostAtOnce = 0x40000000;
        const size_t count = text.size() - done < kMostAtOnce ? text.size() - done : kMostAtOnce;
        CharLowerBuffW(reinterpret_cast<wchar_t*>(text.data()) + done, static_cast<DWORD>(count));
        done += count;
    }
}

bool PlatformDecodeCodePage(const std::string& text, uint32_t codePage, std::u16string& result) {
    if (!FitsInt(text.size())) {
        return false;
    }
    result.resize(text.size() * 3);
    const int length = MultiByteToWideChar(
        codePage, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()),
        reinterpret_cast<wchar_t*>(result.data()), static_cast<int>(result.size()));
    result.resize(static_cast<size_t>(length));
    return length != 0;
}

// The standard library of this compiler knows no named locales.
SNumberSigns PlatformNumberSigns(const std::string& localeName) {
    if (localeName == "C" || localeName == "POSIX") {
        return {};
    }
    const std::u16string name = Utf8ToUtf16Default(localeName);
    const wchar_t* const systemName = name.empty() ? LOCALE_NAME_USER_DEFAULT : Wide(name.c_str());
    // The longest of either sign has three units and a terminator.
    wchar_t point[8] = {};
    wchar_t separator[8] = {};
    if (GetLocaleInfoEx(systemName, LOCALE_SDECIMAL, point, 8) == 0 ||
        GetLocaleInfoEx(systemName, LOCALE_STHOUSAND, separator, 8) == 0) {
        NSLichen::Raise(std::runtime_error("unknown locale " + localeName));
    }
    return {point[0], separator[0]};
}

} // namespace NSTextPackage

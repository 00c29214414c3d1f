#pragma once

#include <cstddef>
#include <string>

namespace NSFileLibInternals {

/// UTF-16 text as the Windows API takes it, whatever type its characters have.
template <class Wide>
std::basic_string<Wide> WideOf(const std::u16string& text) {
    static_assert(sizeof(Wide) == sizeof(char16_t));
    return std::basic_string<Wide>(text.begin(), text.end());
}

/// Up to the terminator.
template <class Wide>
std::u16string Utf16Of(const Wide* text) {
    static_assert(sizeof(Wide) == sizeof(char16_t));
    const std::basic_string<Wide> whole(text);
    return std::u16string(whole.begin(), whole.end());
}

} // namespace NSFileLibInternals

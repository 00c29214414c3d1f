// Small operations on UTF-16 text, and numbers as text. Sets of characters are given as UTF-8; one
// that is not raises XFormatViolation with the target word "unicode". Any thread may call.
#pragma once

#include <cstddef>
#include <string>

namespace NSTextPackage {

/// Copies at most `limit` units and then a terminator; `destination` holds `limit` + 1 units. A
/// longer source is cut, also inside a surrogate pair.
void CopyToBuffer(char16_t* destination, const std::u16string& source, size_t limit);

/// The first `count` units, or all of a shorter text.
std::u16string LeftOf(const std::u16string& text, size_t count);

/// Every unit that is in the set becomes `replacement`.
std::u16string ReplaceAnyOf(const std::u16string& text, const std::string& characters,
                            char16_t replacement);

/// Without the leading or trailing units that are in the set.
std::u16string TrimStart(const std::u16string& text, const std::string& characters);
std::u16string TrimEnd(const std::u16string& text, const std::string& characters);

/// "%.*f" with a decimal point in every locale of the host; at most 511 characters. A negative
/// number of decimals means 6.
std::string FormatFixed(double value, int decimals);

} // namespace NSTextPackage

// Linguistic comparison and lower-casing of UTF-16 text, independent of the user's locale. Any
// thread may call.
#pragma once

#include <cstdint>
#include <string>

namespace NSTextPackage {

/// Callers compare with the numbers.
enum class EComparison : int32_t { kLess = 17014, kGreater = 17015, kEqual = 17016 };

/// Orders symbols before digits before letters, base letters before marks before case, as a
/// consistent order over all texts. A leading U+FEFF of either text is skipped. `ignoreCase` and
/// `ignoreMarks` drop those levels; on Windows `ignoreMarks` keeps the meaning that the system
/// gives its number: marks count, and runs of digits compare by their values. A failure of the
/// system's call raises XFormatViolation with the target word "unicode".
EComparison CompareText(const std::u16string& a, const std::u16string& b, bool ignoreCase,
                        bool ignoreMarks);

bool TextEquals(const std::u16string& a, const std::u16string& b);
bool TextEqualsIgnoreCase(const std::u16string& a, const std::u16string& b);

/// Unit by unit, so the length stays; units without a lower case stay as they are.
std::u16string ToLowerUtf16(const std::u16string& text);

} // namespace NSTextPackage

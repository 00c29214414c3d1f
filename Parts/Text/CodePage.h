// 8-bit texts in Windows code pages. Any thread may call.
#pragma once

#include <cstdint>
#include <string>

namespace NSTextPackage {

constexpr uint32_t kCodePage_1252 = 1252;

/// Bytes that are not a text of the code page, and a code page that the system does not know, raise
/// XFormatViolation with the target word "unicode". Code page 1252 decodes every byte, alike on all
/// systems. Windows knows no decoder that stops at bad bytes for the pages 1200, 1201, 12000,
/// 12001, 50220 to 50229 and 65000, and refuses them.
std::u16string CodePageToUtf16(const std::string& text, uint32_t codePage);

/// The five bytes without a character (81, 8D, 8F, 90, 9D) decode to the control codes U+0081 and
/// so on, as Windows does.
std::u16string Cp1252ToUtf16(const std::string& text);

/// The inverse of Cp1252ToUtf16. Each unit that the code page lacks becomes `replacement`, so a
/// surrogate pair becomes two of them.
std::string Utf16ToCp1252(const std::u16string& text, char replacement);

} // namespace NSTextPackage

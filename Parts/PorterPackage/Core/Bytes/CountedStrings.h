// Texts behind their length, as files hold them. In memory they are UTF-16.
//
// More text than the media holds raises XFormatViolation, and a length field that is cut off XRead.
// Text that is no UTF-8 raises XFormatViolation with the target word "unicode".
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <string>

namespace NSPorter {

/// The byte count of a UTF-8 string lies below this.
constexpr uint32_t kUTF8StringLimit = 16384;

/// The plain form is a u32 byte count and code page 1252, with line ends that become U+2029; the
/// long form is 0xFFFFFFFF, a version, a u32 byte count and UTF-8, with line ends unchanged. Either
/// text ends at its first zero byte, and the cursor behind all counted bytes. A long form of
/// another major version than 1 raises XUnsupportedFormat.
std::u16string ReadCountedString(CMedia& media);
/// Takes the long form only where code page 1252 cannot hold the text. U+2029, which it cannot hold
/// either, is not turned back into a line end.
void WriteCountedString(CMedia& media, const std::u16string& text);

/// A u32 byte count and UTF-8, without a terminator.
std::u16string ReadUTF8String(CMedia& media);
/// A text of kUTF8StringLimit bytes or more raises XFormatViolation and writes nothing.
void WriteUTF8String(CMedia& media, const std::u16string& text);

} // namespace NSPorter

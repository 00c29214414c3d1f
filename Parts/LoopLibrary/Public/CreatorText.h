#pragma once

#include <cstddef>
#include <string>

namespace NSLOPDLL {

/// The longest start of a UTF-8 text that has at most `limit` bytes and splits no character.
std::string CutUtf8(const std::string& text, size_t limit);

/// Converts one creator text to UTF-8 into a field of the host's record, cut to the room and ended
/// by a zero. Raises XFormatViolation with the word "unicode" when the text is not Unicode.
void CopyCreatorText(const std::u16string& text, char (&field)[256]);

} // namespace NSLOPDLL

#pragma once

#include <cstddef>
#include <string>

namespace NSLoopTool {

/// A text of a file, or a file's name, as a terminal may be given it: control characters, and bytes
/// that are not UTF-8, are spelled out ("\n", "\x1B"), so that no text acts on the terminal.
std::string SafeText(const std::string& text);

/// Columns of a text that has passed SafeText, one to a character.
size_t TextWidth(const std::string& text);

/// The text cut to so many columns, with "..." at its start if something is missing.
std::string KeepEnd(const std::string& text, size_t columns);

} // namespace NSLoopTool

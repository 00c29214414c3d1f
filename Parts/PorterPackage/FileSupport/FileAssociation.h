#pragma once

#include <string>

namespace NSFileLibSupport {

/// The program that opens files of a class, "LoopFile.1", or extension, ".lop": its full native
/// path. XNotFound when no program does, and always on systems that keep no such table.
std::u16string FindAssociatedProgram(const std::u16string& fileClass);

} // namespace NSFileLibSupport

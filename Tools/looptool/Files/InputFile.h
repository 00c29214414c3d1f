#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// All bytes of a file, by any name that the system allows, or of standard input for "-".
/// CToolFailure names the file when it cannot be read, is empty or has more than 2^31 - 1 bytes.
/// From then on no COutputFile takes that file as its target. Any thread may call it.
std::vector<uint8_t> ReadInputFile(const std::string& path);

/// Puts a file that is read by other means among those that must not be written. Raises
/// CToolFailure for what is not a readable file.
void NoteInputFile(const std::string& path);

/// Whether the path leads to a file that has been read.
bool WasRead(const std::string& path);

/// The path as messages show it.
std::string InputName(const std::string& path);

} // namespace NSLoopTool

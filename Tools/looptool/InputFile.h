#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// All bytes of a file, by any name that the system allows; CToolFailure names the file when it
/// cannot be read, is empty, or is larger than the 2^31 - 1 bytes that the library takes.
std::vector<uint8_t> ReadInputFile(const std::string& path);

} // namespace NSLoopTool

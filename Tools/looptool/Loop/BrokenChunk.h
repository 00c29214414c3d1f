#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// The first chunk of a damaged loop file that cannot be read by itself, as 'chunk "GLOB"', with
/// what is plain to see: that it is missing, or reaches beyond the file. Empty where no single
/// chunk is to blame.
std::string BrokenChunk(const std::vector<uint8_t>& bytes);

} // namespace NSLoopTool

#pragma once

#include <cstdint>
#include <string>

namespace NSLoopTool {

/// The name of a loop file without folder and suffix; "loop" for standard input.
std::string StemOf(const std::string& loopFile);

/// The name of the file that a slice is written to: "drums_slice_007.wav". Three digits, or as many
/// as the highest of `count` slices needs, so that names sort in the order of time.
std::string SliceFileName(const std::string& loopFile, int32_t slice, int32_t count,
                          const std::string& suffix);

} // namespace NSLoopTool

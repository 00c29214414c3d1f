#pragma once

#include <string>

namespace NSLoopTool {

enum class EColour { kGood, kBad };

/// The text in a colour where standard output is a terminal and NO_COLOR is not set; else as it is.
std::string Coloured(const std::string& text, EColour colour);

} // namespace NSLoopTool

#pragma once

#include <string>
#include <vector>

namespace NSLoopTool {

/// What follows the program's name on the command line. On Windows in UTF-8, whatever the code
/// page; elsewhere the bytes as they are.
std::vector<std::string> Arguments(int argc, const char* const* argv);

} // namespace NSLoopTool

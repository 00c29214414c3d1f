#pragma once

#include <string>

namespace NSLoopTool {

/// The program's version, and on a line of its own each which of its parts this build has.
std::string VersionText();

} // namespace NSLoopTool

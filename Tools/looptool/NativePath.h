#pragma once

#include <string>

namespace NSLoopTool {

// A path of the command line, relative or not, as the file library speaks of it.
std::u16string NativePathOfArgument(const std::string& argument);

} // namespace NSLoopTool

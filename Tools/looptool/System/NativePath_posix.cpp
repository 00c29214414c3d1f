#include "looptool/System/NativePath.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return argument;
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    return path.native();
}

} // namespace NSLoopTool

#include "looptool/System/NativePath.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return std::u8string(argument.begin(), argument.end());
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace NSLoopTool

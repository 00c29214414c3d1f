#include "looptool/NativePath.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return std::u8string(argument.begin(), argument.end());
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::u16string NativeOfAbsolutePath(const std::filesystem::path& path) {
    return path.u16string();
}

std::FILE* OpenForWriting(const std::string& argument) {
    return _wfopen(PathOfArgument(argument).c_str(), L"wb");
}

} // namespace NSLoopTool

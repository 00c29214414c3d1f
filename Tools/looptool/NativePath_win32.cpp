#include "looptool/NativePath.h"

#include "looptool/ToolFailure.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return std::u8string(argument.begin(), argument.end());
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::u16string NativePathOfArgument(const std::string& argument) {
    std::error_code error;
    const std::filesystem::path absolute =
        std::filesystem::absolute(PathOfArgument(argument), error);
    if (error) {
        throw CToolFailure(argument + ": " + error.message());
    }
    return absolute.u16string();
}

std::FILE* OpenForWriting(const std::string& argument) {
    return _wfopen(PathOfArgument(argument).c_str(), L"wb");
}

} // namespace NSLoopTool

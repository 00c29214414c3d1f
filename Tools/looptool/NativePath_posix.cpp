#include "looptool/NativePath.h"

#include "FileLib/Source/Win/PosixNameCodec.h"
#include "looptool/ToolFailure.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return argument;
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    return path.native();
}

std::u16string NativePathOfArgument(const std::string& argument) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
    if (error) {
        throw CToolFailure(argument + ": " + error.message());
    }
    return NSFileLibInternals::NativeFromPosix(absolute.native());
}

std::FILE* OpenForWriting(const std::string& argument) {
    return std::fopen(argument.c_str(), "wb");
}

} // namespace NSLoopTool

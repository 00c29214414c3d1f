#include "looptool/NativePath.h"

#include "FileLib/Rules/PosixNameCodec.h"

namespace NSLoopTool {

std::filesystem::path PathOfArgument(const std::string& argument) {
    return argument;
}

std::string ArgumentOfPath(const std::filesystem::path& path) {
    return path.native();
}

std::u16string NativeOfAbsolutePath(const std::filesystem::path& path) {
    return NSFileLibInternals::NativeFromPosix(path.native());
}

std::FILE* OpenForWriting(const std::string& argument) {
    return std::fopen(argument.c_str(), "wb");
}

} // namespace NSLoopTool

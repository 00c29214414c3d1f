#include "Tests/Debug/TestFolder.h"

#include "FileLib/Source/Win/PosixNameCodec.h"

std::filesystem::path ToSystemPath(const std::u16string& path) {
    return NSFileLibInternals::PosixFromNative(path);
}

std::u16string FromSystemPath(const std::filesystem::path& path) {
    return NSFileLibInternals::NativeFromPosix(path.string());
}

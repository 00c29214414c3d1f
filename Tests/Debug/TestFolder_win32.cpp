#include "Tests/Debug/TestFolder.h"

std::filesystem::path ToSystemPath(const std::u16string& path) {
    return path;
}

std::u16string FromSystemPath(const std::filesystem::path& path) {
    return path.u16string();
}

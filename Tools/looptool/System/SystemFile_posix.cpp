#include "looptool/System/SystemFile.h"

#include <sys/stat.h>
#include <unistd.h>

namespace NSLoopTool {

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

std::FILE* OpenInPlace(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "wb");
}

std::FILE* CreateNewFile(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "wbx");
}

bool SeekTo(std::FILE* file, int64_t position) {
    return fseeko(file, position, SEEK_SET) == 0;
}

bool MayWrite(const std::filesystem::path& path) {
    return access(path.c_str(), W_OK) == 0;
}

std::optional<SFileIdentity> IdentityOfFile(const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return SFileIdentity{static_cast<uint64_t>(status.st_dev),
                         static_cast<uint64_t>(status.st_ino)};
}

uint64_t ProcessNumber() {
    return static_cast<uint64_t>(getpid());
}

} // namespace NSLoopTool

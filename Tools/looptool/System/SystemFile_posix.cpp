#include "looptool/System/SystemFile.h"

#include "looptool/System/Interrupt.h"

#include <cerrno>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSLoopTool {

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

// A signal that comes just before a call that waits does not end it, so the wait is in short
// pieces.
std::ptrdiff_t ReadSome(std::FILE* file, void* bytes, size_t count) {
    constexpr int kPieceMilliseconds = 200;
    pollfd input{fileno(file), POLLIN, 0};
    while (!WasInterrupted()) {
        if (poll(&input, 1, kPieceMilliseconds) == 0) {
            continue;
        }
        const ssize_t length = read(input.fd, bytes, count);
        if (length >= 0 || errno != EINTR) {
            return length;
        }
    }
    errno = EINTR;
    return -1;
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

#include "Debug/Platform/WriteAll_posix.h"

#include <unistd.h>

#include <cerrno>

namespace NSDebugPackage {

bool WriteAll(int file, const void* data, size_t count) noexcept {
    const auto* bytes = static_cast<const char*>(data);
    while (count > 0) {
        const ssize_t written = write(file, bytes, count);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

} // namespace NSDebugPackage

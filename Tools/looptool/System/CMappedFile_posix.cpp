#include "looptool/System/CMappedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSLoopTool {

CMappedFile::CMappedFile(const std::filesystem::path& path) {
    // A pipe must not hold up a walk through folders.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return;
    }
    struct stat status {};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        const auto size = static_cast<size_t>(status.st_size);
        void* const bytes =
            size == 0 ? nullptr : mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        fIsOpen = bytes != MAP_FAILED;
        if (fIsOpen && bytes != nullptr) {
            fBytes = {static_cast<const uint8_t*>(bytes), size};
        }
    }
    close(file);
}

CMappedFile::~CMappedFile() {
    if (!fBytes.empty()) {
        munmap(const_cast<uint8_t*>(fBytes.data()), fBytes.size());
    }
}

} // namespace NSLoopTool

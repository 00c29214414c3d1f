// Contents, times and sharing of files.
//
// The POSIX body has one volume, "C:\", which is "/"; other letters and shares are well formed and
// do not exist. Handles are file descriptors, and pointers for scans; shell items are the bytes of
// a path.
//
// Sharing is by advisory locks, so it holds among users of this library. A name with the extension
// of an alias is taken as the link itself and not as what it leads to, which makes symbolic links
// under such names behave as shell links do; info is then that of the link. Hidden is a leading
// ".", and cannot be set; a file without any write permission is read-only, also for those who may
// write everything.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Platform/PosixStat.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

constexpr mode_t kNewFileMode = 0666;

int DescriptorOf(PlatformHandle handle) {
    return static_cast<int>(handle);
}

int OpenFlagsOf(const SOpenRequest& request) {
    // Without O_NONBLOCK a FIFO would wait for its other end; regular files do not mind. Emptying
    // waits for the lock, so there is no O_TRUNC.
    int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    flags |= request.fAccess == EFileAccess::kReadWrite ? O_RDWR : O_RDONLY;
    if (request.fCreation == EFileCreation::kCreateNew) {
        flags |= O_CREAT | O_EXCL;
    } else if (request.fCreation == EFileCreation::kCreateAlways) {
        flags |= O_CREAT;
    }
    return flags;
}

// Puts an open file in the state that the request asks for. Answers an error code.
uint32_t PrepareFile(int descriptor, const SOpenRequest& request) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        return ErrorOfErrno(errno);
    }
    const bool isLinkItself =
        request.fAccess == EFileAccess::kWriteAttributes && S_ISLNK(status.st_mode);
    if (!S_ISREG(status.st_mode) && !isLinkItself) {
        return kError_AccessDenied;
    }
    if (request.fAccess != EFileAccess::kWriteAttributes) {
        const int lock = request.fSharing == kShare_None ? LOCK_EX : LOCK_SH;
        // File systems without locks share everything.
        if (flock(descriptor, lock | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
            return kError_SharingViolation;
        }
    }
    if (request.fCreation == EFileCreation::kCreateAlways && ftruncate(descriptor, 0) != 0) {
        return ErrorOfWriteErrno(errno);
    }
    return kError_None;
}

// Moves bytes until all are moved or step answers 0; step answers -1 with errno for an error.
template <class Step>
int TransferAll(uint64_t position, uint64_t count, uint64_t& transferred, Step step) {
    constexpr uint64_t kMost = uint64_t{1} << 30;
    constexpr auto kLastPosition = static_cast<uint64_t>(std::numeric_limits<off_t>::max());
    transferred = 0;
    while (transferred < count) {
        if (position > kLastPosition - transferred) {
            return EFBIG;
        }
        const ssize_t moved = step(transferred, std::min(count - transferred, kMost),
                                   static_cast<off_t>(position + transferred));
        if (moved < 0 && errno == EINTR) {
            continue;
        }
        if (moved < 0) {
            return errno;
        }
        if (moved == 0) {
            break;
        }
        transferred += static_cast<uint64_t>(moved);
    }
    return 0;
}

} // namespace

uint32_t CSystemFileOps::Open(const std::u16string& path, const SOpenRequest& request,
                              PlatformHandle& file) {
    const std::string systemPath = SystemPath(path);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    int flags = OpenFlagsOf(request);
    struct stat status = {};
    if (request.fAccess == EFileAccess::kWriteAttributes &&
        StatForInfo(AT_FDCWD, systemPath, status) == 0 && S_ISLNK(status.st_mode)) {
        flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    }
    int descriptor = -1;
    do {
        descriptor = open(systemPath.c_str(), flags, kNewFileMode);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) {
        return ErrorOfErrno(errno);
    }
    const uint32_t errorCode = PrepareFile(descriptor, request);
    if (errorCode != kError_None) {
        close(descriptor);
        return errorCode;
    }
    file = descriptor;
    return kError_None;
}

void CSystemFileOps::Close(PlatformHandle file) noexcept {
    close(DescriptorOf(file));
}

uint32_t CSystemFileOps::Read(PlatformHandle file, uint64_t position, uint64_t count,
                              uint8_t* buffer, uint64_t& transferred) {
    const int error =
        TransferAll(position, count, transferred, [&](uint64_t done, uint64_t size, off_t offset) {
            return pread(DescriptorOf(file), buffer + done, static_cast<size_t>(size), offset);
        });
    return error == 0 ? kError_None : ErrorOfReadErrno(error);
}

uint32_t CSystemFileOps::Write(PlatformHandle file, uint64_t position, uint64_t count,
                               const uint8_t* buffer, uint64_t& transferred) {
    const int error =
        TransferAll(position, count, transferred, [&](uint64_t done, uint64_t size, off_t offset) {
            return pwrite(DescriptorOf(file), buffer + done, static_cast<size_t>(size), offset);
        });
    return error == 0 ? kError_None : ErrorOfWriteErrno(error);
}

uint32_t CSystemFileOps::ReadSize(PlatformHandle file, uint64_t& size) {
    struct stat status = {};
    if (fstat(DescriptorOf(file), &status) != 0) {
        return ErrorOfReadErrno(errno);
    }
    size = static_cast<uint64_t>(status.st_size);
    return kError_None;
}

uint32_t CSystemFileOps::ReadTimes(PlatformHandle file, SFileTimes& times) {
    struct stat status = {};
    if (fstat(DescriptorOf(file), &status) != 0) {
        return ErrorOfReadErrno(errno);
    }
    times = EntryOf("", status).fTimes;
    ReadBirthTime(DescriptorOf(file), "", 0, times);
    return kError_None;
}

uint32_t CSystemFileOps::WriteTimes(PlatformHandle file, const SFileTimes& times) {
    // The time of creation is the system's own affair.
    struct timespec values[2] = {TimespecOf(times.fLastAccess), TimespecOf(times.fLastWrite)};
    values[0].tv_nsec = times.fLastAccess == 0 ? UTIME_OMIT : values[0].tv_nsec;
    values[1].tv_nsec = times.fLastWrite == 0 ? UTIME_OMIT : values[1].tv_nsec;
    // A link itself has no descriptor that futimens takes.
    const bool isSet =
        futimens(DescriptorOf(file), values) == 0 ||
        (errno == EBADF && utimensat(DescriptorOf(file), "", values, AT_EMPTY_PATH) == 0);
    return isSet ? kError_None : ErrorOfWriteErrno(errno);
}

} // namespace NSFileLibInternals

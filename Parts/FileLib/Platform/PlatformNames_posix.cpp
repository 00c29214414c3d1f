// Attributes, names and folders.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Platform/PosixStat.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

constexpr mode_t kAllWriteBits = S_IWUSR | S_IWGRP | S_IWOTH;

struct SFolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};
using FolderPointer = std::unique_ptr<DIR, SFolderCloser>;

DIR* FolderOf(PlatformHandle scan) {
    // A pointer that FindFirst gave out; handles are plain numbers on all platforms.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<DIR*>(scan);
}

// The next entry that is there when it is looked at.
uint32_t ReadEntry(DIR* folder, SPlatformEntry& entry) {
    for (;;) {
        errno = 0;
        const struct dirent* const row = readdir(folder);
        if (row == nullptr) {
            return errno == 0 ? kError_NoMoreFiles : ErrorOfReadErrno(errno);
        }
        const std::string name = row->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        struct stat status = {};
        if (StatBehindLinks(dirfd(folder), name, status) == 0 ||
            fstatat(dirfd(folder), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
            entry = EntryOf(name, status);
            ReadBirthTime(dirfd(folder), name, AT_SYMLINK_NOFOLLOW, entry.fTimes);
            return kError_None;
        }
    }
}

void SyncPath(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

std::string FolderOfPath(const std::string& path) {
    const size_t separator = path.rfind('/');
    return separator == 0 ? "/" : path.substr(0, separator);
}

// Renaming a file to another name of itself succeeds and does nothing.
bool AreTwoNamesOfOneFile(const std::string& from, const std::string& to) {
    struct stat a = {};
    struct stat b = {};
    return from != to && lstat(from.c_str(), &a) == 0 && lstat(to.c_str(), &b) == 0 &&
           a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_nlink > 1;
}

// Answers errno, 0 for success.
int MoveReplacing(const std::string& from, const std::string& to) {
    const int result =
        AreTwoNamesOfOneFile(from, to) ? unlink(from.c_str()) : rename(from.c_str(), to.c_str());
    return result == 0 ? 0 : errno;
}

int MoveWithoutReplacing(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // A file system without this kind of renaming. A link never replaces; where there are no links
    // either, looking first is all that is left.
    if (link(from.c_str(), to.c_str()) == 0) {
        const int error = unlink(from.c_str()) == 0 ? 0 : errno;
        if (error != 0) {
            unlink(to.c_str()); // a move that fails leaves one name, the old one
        }
        return error;
    }
    if (errno != EPERM && errno != EOPNOTSUPP) {
        return errno;
    }
    struct stat status = {};
    if (lstat(to.c_str(), &status) == 0) {
        return EEXIST;
    }
    return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

std::u16string NumberedName(const std::u16string& prefix, uint32_t number) {
    char digits[16];
    std::snprintf(digits, sizeof(digits), "%04x.tmp", number & 0xFFFFU);
    return prefix.substr(0, 3) + NativeNameFromPosix(digits);
}

} // namespace

uint32_t CSystemFileOps::ReadAttributes(const std::u16string& path, uint32_t& errorCode) {
    const std::string systemPath = SystemPath(path);
    struct stat status = {};
    errorCode = systemPath.empty() ? kError_PathNotFound
                                   : ErrorOfErrno(StatBehindLinks(AT_FDCWD, systemPath, status));
    return errorCode == kError_None ? AttributesOf(systemPath, status) : kAttributes_None;
}

uint32_t CSystemFileOps::WriteAttributes(const std::u16string& path, uint32_t attributes) {
    const std::string systemPath = SystemPath(path);
    struct stat status = {};
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    if (stat(systemPath.c_str(), &status) != 0) {
        return ErrorOfErrno(errno);
    }
    const mode_t before = status.st_mode & 07777U;
    mode_t mode = before;
    if ((attributes & kAttribute_ReadOnly) != 0) {
        mode &= ~kAllWriteBits;
    } else if ((mode & kAllWriteBits) == 0) {
        mode |= S_IWUSR;
    }
    return mode == before || chmod(systemPath.c_str(), mode) == 0 ? kError_None
                                                                  : ErrorOfWriteErrno(errno);
}

uint32_t CSystemFileOps::FindFirst(const std::u16string& folder, PlatformHandle& scan,
                                   SPlatformEntry& entry) {
    const std::string systemPath = SystemPath(folder);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    FolderPointer stream(opendir(systemPath.c_str()));
    if (stream == nullptr) {
        return ErrorOfErrno(errno);
    }
    const uint32_t errorCode = ReadEntry(stream.get(), entry);
    if (errorCode == kError_None) {
        scan = reinterpret_cast<PlatformHandle>(stream.release());
    }
    return errorCode;
}

uint32_t CSystemFileOps::FindNext(PlatformHandle scan, SPlatformEntry& entry) {
    return ReadEntry(FolderOf(scan), entry);
}

void CSystemFileOps::EndFind(PlatformHandle scan) noexcept {
    closedir(FolderOf(scan));
}

uint32_t CSystemFileOps::FindEntry(const std::u16string& path, SPlatformEntry& entry) {
    const std::string systemPath = SystemPath(path);
    struct stat status = {};
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    if (lstat(systemPath.c_str(), &status) != 0) {
        return ErrorOfErrno(errno);
    }
    entry = EntryOf(systemPath, status);
    ReadBirthTime(AT_FDCWD, systemPath, AT_SYMLINK_NOFOLLOW, entry.fTimes);
    return kError_None;
}

void CSystemFileOps::CopyAccessRights(const std::u16string& from, const std::u16string& to) {
    struct stat status = {};
    const std::string source = SystemPath(from);
    const std::string target = SystemPath(to);
    const int descriptor = open(target.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (descriptor < 0) {
        return;
    }
    // The owner first: a change of owner may take bits away. Only a privileged process may give
    // files away, so a refusal is ordinary.
    if (stat(source.c_str(), &status) == 0 &&
        (fchown(descriptor, status.st_uid, status.st_gid) == 0 || errno == EPERM)) {
        fchmod(descriptor, status.st_mode & 0777U);
    }
    close(descriptor);
}

uint32_t CSystemFileOps::Move(const std::u16string& from, const std::u16string& to,
                              uint32_t flags) {
    const std::string fromPath = SystemPath(from);
    const std::string toPath = SystemPath(to);
    if (fromPath.empty() || toPath.empty()) {
        return kError_PathNotFound;
    }
    const bool isWrittenThrough = (flags & kMove_WriteThrough) != 0;
    if (isWrittenThrough) {
        SyncPath(fromPath);
    }
    const int error = (flags & kMove_Replace) != 0 ? MoveReplacing(fromPath, toPath)
                                                   : MoveWithoutReplacing(fromPath, toPath);
    if (error == 0 && isWrittenThrough) {
        SyncPath(FolderOfPath(toPath));
    }
    return ErrorOfErrno(error);
}

uint32_t CSystemFileOps::Delete(const std::u16string& path) {
    const std::string systemPath = SystemPath(path);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    return unlink(systemPath.c_str()) == 0 ? kError_None : ErrorOfErrno(errno);
}

uint32_t CSystemFileOps::MakeFolder(const std::u16string& path) {
    const std::string systemPath = SystemPath(path);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    return mkdir(systemPath.c_str(), 0777) == 0 ? kError_None : ErrorOfErrno(errno);
}

uint32_t CSystemFileOps::RemoveFolder(const std::u16string& path) {
    const std::string systemPath = SystemPath(path);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    return rmdir(systemPath.c_str()) == 0 ? kError_None : ErrorOfErrno(errno);
}

uint32_t CSystemFileOps::MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                                      uint32_t number, std::u16string& path) {
    if (number != 0) {
        path = JoinPath(folder, NumberedName(prefix, number));
        return kError_None;
    }
    // Begins somewhere else each time, so that two processes seldom try the same names.
    static std::atomic<uint32_t> gTurn = 0;
    struct timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const uint32_t first = static_cast<uint32_t>(now.tv_nsec / 1000) +
                           static_cast<uint32_t>(getpid()) * 7919U + gTurn.fetch_add(1) * 257U;
    for (uint32_t i = 0; i <= 0xFFFF; ++i) {
        const std::u16string candidate = JoinPath(folder, NumberedName(prefix, first + i));
        PlatformHandle file = kNoPlatformHandle;
        const uint32_t errorCode = Open(
            candidate, {EFileAccess::kReadWrite, kShare_None, EFileCreation::kCreateNew}, file);
        if (errorCode == kError_None) {
            Close(file);
            path = candidate;
            return kError_None;
        }
        if (errorCode != kError_AlreadyExists) {
            return errorCode;
        }
    }
    return kError_FileExists;
}

uint32_t CSystemFileOps::ReadLongPath(const std::u16string& path, std::u16string& longPath) {
    SPlatformEntry entry;
    const uint32_t errorCode = FindEntry(path, entry);
    if (errorCode == kError_None) {
        longPath = path;
    }
    return errorCode;
}

} // namespace NSFileLibInternals

// Attributes, names and folders.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Platform/PosixStat.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PosixNameCodec.h"

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
        if (FindEntryAt(dirfd(folder), name, entry) == 0) {
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
    if (const int error = StatForInfo(AT_FDCWD, systemPath, status); error != 0) {
        return ErrorOfErrno(error);
    }
    const mode_t before = status.st_mode & 07777U;
    mode_t mode = before;
    if ((attributes & kAttribute_ReadOnly) != 0) {
        mode &= ~kAllWriteBits;
    } else if ((mode & kAllWriteBits) == 0) {
        mode |= S_IWUSR;
    }
    // The rights of a link itself cannot be changed, which the system says.
    const int flags = S_ISLNK(status.st_mode) ? AT_SYMLINK_NOFOLLOW : 0;
    return mode == before || fchmodat(AT_FDCWD, systemPath.c_str(), mode, flags) == 0
               ? kError_None
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
    return systemPath.empty() ? kError_PathNotFound
                              : ErrorOfErrno(FindEntryAt(AT_FDCWD, systemPath, entry));
}

void CSystemFileOps::CopyAccessRights(const std::u16string& from, const std::u16string& to) {
    struct stat status = {};
    const std::string source = SystemPath(from);
    const std::string target = SystemPath(to);
    const int descriptor = open(target.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (descriptor < 0) {
        return;
    }
    if (stat(source.c_str(), &status) == 0) {
        mode_t mode = status.st_mode & 0777U;
        // The owner first: a change of owner may take bits away. Only a privileged process may give
        // files away, so a refusal is ordinary; a member of the group may still set the group. The
        // bits of the group are for that group alone.
        constexpr uid_t kSameOwner = static_cast<uid_t>(-1);
        if (fchown(descriptor, status.st_uid, status.st_gid) != 0 &&
            fchown(descriptor, kSameOwner, status.st_gid) != 0) {
            mode &= ~static_cast<mode_t>(S_IRWXG);
        }
        fchmod(descriptor, mode);
    }
    close(descriptor);
}

std::u16string CSystemFileOps::FollowLinks(const std::u16string& path) {
    constexpr int kMostLinks = 40; // as many as the system follows
    const std::string systemPath = SystemPath(path);
    std::string end = systemPath;
    for (int i = 0; i < kMostLinks && !end.empty() && !IsPosixAliasName(end); ++i) {
        std::string target;
        if (ReadLink(end, target) != 0) { // no link
            break;
        }
        end = target;
    }
    return end == systemPath ? path : NativeFromPosix(end);
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
    if (SystemPath(folder).empty()) {
        return kError_PathNotFound;
    }
    for (int i = 0; i <= 0xFFFF; ++i) {
        const std::u16string candidate =
            JoinPath(folder, NumberedName(prefix, NextTempNumber(static_cast<uint32_t>(getpid()))));
        const int file = open(SystemPath(candidate).c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC,
                              S_IRUSR | S_IWUSR);
        if (file >= 0) {
            close(file);
            path = candidate;
            return kError_None;
        }
        if (errno != EEXIST) {
            return ErrorOfErrno(errno);
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

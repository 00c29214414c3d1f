// The one volume, well-known places, aliases, and what else the system is asked.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Platform/PosixStat.h"
#include "FileLib/Platform/UserFolders_posix.h"
#include "FileLib/Rules/PathRules.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

constexpr uint32_t kOLE_OK = 0;
constexpr std::string_view kDeletedSuffix = " (deleted)";

uint32_t OLEResultOf(uint32_t errorCode) {
    return 0x80070000U | errorCode;
}

bool IsTheVolume(const std::u16string& root) {
    return PosixFromNative(root) == "/";
}

std::string FindSpecialFolder(int32_t number) {
    const std::string home = FindHomeFolder();
    switch (number) {
    case kSpecialFolder_CommonAppData:
        return "/var/lib";
    case kSpecialFolder_Windows:
        return "/";
    case kSpecialFolder_Desktop:
        return FindUserFolder(home, "DESKTOP", "Desktop");
    case kSpecialFolder_Personal:
        return FindUserFolder(home, "DOCUMENTS", "Documents");
    case kSpecialFolder_AppData:
        return home.empty() ? home : home + "/.config";
    default:
        return {};
    }
}

bool IsRunningProgram(const std::string& path) {
    struct stat named = {};
    struct stat running = {};
    return stat(path.c_str(), &named) == 0 && stat("/proc/self/exe", &running) == 0 &&
           named.st_dev == running.st_dev && named.st_ino == running.st_ino;
}

} // namespace

IPlatformFileOps& GetSystemFileOps() {
    static CSystemFileOps ops;
    return ops;
}

size_t CSystemFileOps::GetLongestPath() const noexcept {
    return kNoPathLimit;
}

uint32_t CSystemFileOps::FindTempFolder(std::u16string& folder) {
    folder = NativeFromPosix(P_tmpdir "/");
    return kError_None;
}

uint32_t CSystemFileOps::ListDriveRoots(std::vector<std::u16string>& roots) {
    roots = {NativeFromPosix("/")};
    return kError_None;
}

uint32_t CSystemFileOps::ReadDriveKind(const std::u16string& root) {
    return IsTheVolume(root) ? kDrive_Fixed : kDrive_NoRoot;
}

uint32_t CSystemFileOps::ReadVolumeInfo(const std::u16string& root, SPlatformVolume& info) {
    struct statvfs status = {};
    if (!IsTheVolume(root)) {
        return kError_PathNotFound;
    }
    if (statvfs("/", &status) != 0) {
        return ErrorOfReadErrno(errno);
    }
    info = {};
    info.fSerialNumber = static_cast<uint32_t>(status.f_fsid);
    info.fMaxComponentLength = static_cast<uint32_t>(status.f_namemax);
    return kError_None;
}

uint32_t CSystemFileOps::ReadDiskSpace(const std::u16string& folder, SDiskSpace& space) {
    struct statvfs status = {};
    const std::string systemPath = SystemPath(folder);
    if (systemPath.empty()) {
        return kError_PathNotFound;
    }
    if (statvfs(systemPath.c_str(), &status) != 0) {
        return ErrorOfReadErrno(errno);
    }
    const uint64_t fragment = status.f_frsize;
    space.fFreeForUser = fragment * status.f_bavail;
    space.fTotal = fragment * status.f_blocks;
    return kError_None;
}

uint32_t CSystemFileOps::ReadDeviceName(const std::u16string& /*drive*/, std::u16string& name) {
    name.clear();
    return kError_None;
}

uint32_t CSystemFileOps::FindWindowsFolder(std::u16string& folder) {
    folder = NativeFromPosix("/");
    return kError_None;
}

uint32_t CSystemFileOps::LocateSpecialFolder(int32_t number, ShellItem& item) {
    const std::string folder = FindSpecialFolder(number);
    if (folder.empty()) {
        return kOLE_NotFound;
    }
    // Where programs keep their settings is made by the first program that has some.
    if (number == kSpecialFolder_AppData) {
        mkdir(folder.c_str(), 0700);
    }
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        return kOLE_NotFound;
    }
    item.assign(folder.begin(), folder.end());
    return kOLE_OK;
}

uint32_t CSystemFileOps::CreateShellLink(const std::u16string& link, const std::u16string& source,
                                         const std::u16string& /*description*/) {
    const std::string linkPath = SystemPath(link);
    const std::string sourcePath = SystemPath(source);
    if (linkPath.empty() || sourcePath.empty()) {
        return OLEResultOf(kError_PathNotFound);
    }
    // An older link gives way, as a shell link does; anything else under this name stays.
    struct stat status = {};
    if (lstat(linkPath.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) {
        unlink(linkPath.c_str());
    }
    return symlink(sourcePath.c_str(), linkPath.c_str()) == 0 ? kOLE_OK
                                                              : OLEResultOf(ErrorOfErrno(errno));
}

uint32_t CSystemFileOps::LoadShellLink(const std::u16string& link, ShellItem& target,
                                       ELinkStep& step) {
    const std::string linkPath = SystemPath(link);
    std::string leadsTo;
    const int error = ReadLink(linkPath, leadsTo);
    if (error != 0) {
        step = ELinkStep::kLoad;
        return error == EINVAL ? kOLE_BadFormat : OLEResultOf(ErrorOfErrno(error));
    }
    target.assign(leadsTo.begin(), leadsTo.end());
    step = ELinkStep::kDone;
    return kOLE_OK;
}

bool CSystemFileOps::ReadShellItemPath(const ShellItem& item, std::u16string& path) {
    path = NativeFromPosix(std::string(item.begin(), item.end()));
    return true;
}

uint32_t CSystemFileOps::FindExecutable(std::u16string& path) {
    std::string file;
    const int error = ReadLink("/proc/self/exe", file);
    if (error != 0) {
        return ErrorOfReadErrno(error);
    }
    // The system's own addition, unless the program's name really ends so.
    if (file.ends_with(kDeletedSuffix) && !IsRunningProgram(file)) {
        file.resize(file.size() - kDeletedSuffix.size());
    }
    path = NativeFromPosix(file);
    return kError_None;
}

uint32_t CSystemFileOps::SetErrorMode(uint32_t /*mode*/) noexcept {
    return 0;
}

void CSystemFileOps::Wait(uint32_t milliseconds) noexcept {
    struct timespec rest = {static_cast<time_t>(milliseconds / 1000),
                            static_cast<long>(milliseconds % 1000) * 1000000L};
    while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}

} // namespace NSFileLibInternals

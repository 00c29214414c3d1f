#include "FileLib/Platform/PosixStat.h"

#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

constexpr int64_t kSecondsFrom1601To1970 = 11644473600;
constexpr int64_t kUnitsPerSecond = 10000000;

std::string LastComponent(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

std::string SystemPath(const std::u16string& path) {
    return PosixFromNative(WithoutTrailingSeparator(path));
}

bool IsPosixAliasName(const std::string& name) {
    return WinIsAliasName(NativeNameFromPosix(LastComponent(name)));
}

int StatBehindLinks(int folder, const std::string& path, struct stat& status) {
    const int flags = IsPosixAliasName(path) ? AT_SYMLINK_NOFOLLOW : 0;
    return fstatat(folder, path.c_str(), &status, flags) == 0 ? 0 : errno;
}

int StatForInfo(int folder, const std::string& path, struct stat& status) {
    if (StatBehindLinks(folder, path, status) == 0) {
        return 0;
    }
    return fstatat(folder, path.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

int FindEntryAt(int folder, const std::string& path, SPlatformEntry& entry) {
    struct stat status = {};
    const int error = StatForInfo(folder, path, status);
    if (error == 0) {
        entry = EntryOf(path, status);
        ReadBirthTime(folder, path, S_ISLNK(status.st_mode) ? AT_SYMLINK_NOFOLLOW : 0,
                      entry.fTimes);
    }
    return error;
}

int ReadLink(const std::string& path, std::string& target) {
    std::string buffer(256, '\0');
    ssize_t length = 0;
    while ((length = readlink(path.c_str(), buffer.data(), buffer.size())) ==
           static_cast<ssize_t>(buffer.size())) {
        buffer.resize(buffer.size() * 2);
    }
    if (length < 0) {
        return errno;
    }
    buffer.resize(static_cast<size_t>(length));
    target = buffer.starts_with('/') ? buffer : path.substr(0, path.rfind('/') + 1) + buffer;
    return 0;
}

void ReadBirthTime(int folder, const std::string& path, int flags, SFileTimes& times) {
    struct statx status = {};
    if (statx(folder, path.c_str(), flags | (path.empty() ? AT_EMPTY_PATH : 0), STATX_BTIME,
              &status) == 0 &&
        (status.stx_mask & STATX_BTIME) != 0) {
        times.fCreation = FileTimeOf(status.stx_btime.tv_sec, status.stx_btime.tv_nsec);
    }
}

uint32_t AttributesOf(const std::string& name, const struct stat& status) {
    uint32_t attributes = 0;
    if (S_ISDIR(status.st_mode)) {
        attributes |= kAttribute_Directory;
    }
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        attributes |= kAttribute_ReadOnly;
    }
    if (LastComponent(name).starts_with('.')) {
        attributes |= kAttribute_Hidden;
    }
    return attributes != 0 ? attributes : kAttribute_Normal;
}

SPlatformEntry EntryOf(const std::string& name, const struct stat& status) {
    SPlatformEntry entry;
    entry.fName = NativeNameFromPosix(LastComponent(name));
    entry.fAttributes = AttributesOf(name, status);
    entry.fTimes.fCreation = FileTimeOf(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    entry.fTimes.fLastAccess = FileTimeOf(status.st_atim.tv_sec, status.st_atim.tv_nsec);
    entry.fTimes.fLastWrite = entry.fTimes.fCreation;
    entry.fSize = S_ISREG(status.st_mode) ? static_cast<uint64_t>(status.st_size) : 0;
    return entry;
}

uint64_t FileTimeOf(int64_t seconds, int64_t nanoseconds) {
    if (seconds < -kSecondsFrom1601To1970) {
        return 0;
    }
    return (static_cast<uint64_t>(seconds) + static_cast<uint64_t>(kSecondsFrom1601To1970)) *
               static_cast<uint64_t>(kUnitsPerSecond) +
           static_cast<uint64_t>(nanoseconds / 100);
}

struct timespec TimespecOf(uint64_t fileTime) {
    struct timespec result = {};
    const uint64_t units = static_cast<uint64_t>(kUnitsPerSecond);
    result.tv_sec =
        static_cast<time_t>(static_cast<int64_t>(fileTime / units) - kSecondsFrom1601To1970);
    result.tv_nsec = static_cast<long>(fileTime % units) * 100;
    return result;
}

} // namespace NSFileLibInternals

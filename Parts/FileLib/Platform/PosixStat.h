// What the system tells of a file, as attributes and times.
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <cstdint>
#include <string>

#include <sys/stat.h>

namespace NSFileLibInternals {

/// The path as the system takes it, without a last "/" (except for the root); empty for what cannot
/// exist there.
std::string SystemPath(const std::u16string& path);

bool IsPosixAliasName(const std::string& name);

/// Follows symbolic links, but takes an alias as it is. Answers errno, 0 for success.
int StatBehindLinks(int folder, const std::string& path, struct stat& status);

/// What the info of a name is about: the same, or the link itself when it leads nowhere. The status
/// is that of a link only when the link itself is meant. Answers errno.
int StatForInfo(int folder, const std::string& path, struct stat& status);

/// The entry of a name in an open folder. Answers errno.
int FindEntryAt(int folder, const std::string& path, SPlatformEntry& entry);

/// Where a link leads, as an absolute path when its own path is absolute. Answers errno, EINVAL for
/// what is not a link.
int ReadLink(const std::string& path, std::string& target);

/// Puts in when the file was made, where the file system knows; an empty path stands for folder
/// itself, an open file. flags as for statx.
void ReadBirthTime(int folder, const std::string& path, int flags, SFileTimes& times);

uint32_t AttributesOf(const std::string& name, const struct stat& status);
/// With the last change of the contents as the time of creation.
SPlatformEntry EntryOf(const std::string& name, const struct stat& status);

uint64_t FileTimeOf(int64_t seconds, int64_t nanoseconds);
struct timespec TimespecOf(uint64_t fileTime);

} // namespace NSFileLibInternals

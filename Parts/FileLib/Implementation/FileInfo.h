// Existence, attributes and times of files and folders.
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

/// Flags are 0 or 1; times are 100 ns units since the beginning of 1601, UTC.
struct SFileInfo {
    int32_t fHidden = 0;
    int32_t fReadOnly = 0;
    int32_t fAlias = 0; // by the extension alone
    int64_t fCreationTime = 0;
    int64_t fLastAccessTime = 0;
    int64_t fLastWriteTime = 0;
    uint32_t fSizeHigh = 0; // of the size in bytes
    uint32_t fSizeLow = 0;
};

SFileInfo FileInfoOfEntry(const SPlatformEntry& entry);

bool WinDoesFileExist(const std::u16string& path);
bool WinDoesDirectoryExist(const std::u16string& path);
bool WinIsReadOnly(const std::u16string& path);

/// Files and folders alike. XNotFound.
SFileInfo WinGetFileInfo(const std::u16string& path);

/// Sets hidden and read-only, and each time that is not 0. XNotFound, XWrite.
void WinSetFileInfo(const std::u16string& path, const SFileInfo& info);

/// Whether the extension of the name is that of an alias.
bool WinIsAliasName(const std::u16string& name);

/// The canonical form of the path of something that exists.
std::u16string WinNormalizePath(const std::u16string& path);

} // namespace NSFileLibInternals

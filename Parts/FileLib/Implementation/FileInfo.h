// Existence, attributes and times of files and folders.
#pragma once

#include "FileLib/Interface/FileLibRecords.h"
#include "FileLib/Platform/IPlatformFileOps.h"

#include <string>

namespace NSFileLibInternals {

NSFileLib::SFileInfo FileInfoOfEntry(const SPlatformEntry& entry);

bool WinDoesFileExist(const std::u16string& path);
bool WinDoesDirectoryExist(const std::u16string& path);
bool WinIsReadOnly(const std::u16string& path);

/// Files and folders alike. XNotFound.
NSFileLib::SFileInfo WinGetFileInfo(const std::u16string& path);

/// Sets hidden and read-only, and each time that is not 0. XNotFound, XWrite.
void WinSetFileInfo(const std::u16string& path, const NSFileLib::SFileInfo& info);

/// The canonical form of the path of something that exists.
std::u16string WinNormalizePath(const std::u16string& path);

} // namespace NSFileLibInternals

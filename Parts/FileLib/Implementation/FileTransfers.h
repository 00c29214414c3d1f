// Transfers of bytes on an open file. XRead and XWrite unless the platform's error says better.
#pragma once

#include "FileLib/Implementation/CFileHandle.h"

#include <cstdint>

namespace NSFileLibInternals {

int64_t WinGetFileSize(const CFileHandle& file);

/// All of the bytes or a failure; position and count are at least 0.
void WinReadFile(const CFileHandle& file, int64_t position, int64_t count, uint8_t* buffer);
void WinWriteFile(const CFileHandle& file, int64_t position, int64_t count, const uint8_t* buffer);

} // namespace NSFileLibInternals

// Open files. Each object holds its handle until it is destroyed; one thread uses one object.
// Positions and counts are in bytes and at least 0; a transfer of 0 bytes succeeds at once.
#pragma once

#include "FileLib/Implementation/CFileHandle.h"

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

/// How a file is opened for writing.
constexpr int32_t kOpenMode_CreateAlways = 101; // empties a file that exists
constexpr int32_t kOpenMode_CreateNew = 102;    // fails when the file exists

/// Reading; others may read and write the file meanwhile.
class COpenReadFileImpl {
public:
    /// XNotFound, XPermission, XLocked...
    explicit COpenReadFileImpl(const std::u16string& path);

    /// All of the bytes, or XRead.
    void Read(int64_t position, int64_t count, uint8_t* buffer) const;
    int64_t GetSize() const;

private:
    CFileHandle fFile;
};

/// Reading and writing; the file cannot be opened a second time meanwhile.
class COpenReadWriteFileImpl {
public:
    /// mode: kOpenMode_CreateAlways EMPTIES an existing file, as creating does; there is no mode
    /// that opens a file and keeps its bytes. XCreate...
    COpenReadWriteFileImpl(const std::u16string& path, int32_t mode);

    void Read(int64_t position, int64_t count, uint8_t* buffer) const;
    void Write(int64_t position, int64_t count, const uint8_t* buffer);
    int64_t GetSize() const;
    /// Nothing else may be called afterwards.
    void Close() noexcept;

private:
    CFileHandle fFile;
};

} // namespace NSFileLibInternals

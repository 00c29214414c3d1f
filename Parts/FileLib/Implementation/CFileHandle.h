// An open file of the platform, closed when it goes out of scope.
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

class CFileHandle {
public:
    CFileHandle() = default;
    ~CFileHandle();
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;

    /// Closes what is open, then opens. Answers an error code.
    uint32_t Open(const std::u16string& path, const SOpenRequest& request);
    void Close() noexcept;

    bool IsOpen() const noexcept;
    PlatformHandle Get() const noexcept { return fHandle; }
    /// The operations that opened the file; only while it is open.
    IPlatformFileOps& GetOps() const noexcept { return *fOps; }

private:
    IPlatformFileOps* fOps = nullptr; // borrowed
    PlatformHandle fHandle = kNoPlatformHandle;
};

} // namespace NSFileLibInternals

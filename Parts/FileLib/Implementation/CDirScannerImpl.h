#pragma once

#include "FileLib/Implementation/FileInfo.h"

#include <string>

namespace NSFileLibInternals {

/// Walks the entries of a folder, files and folders alike, in the platform's order, without "." and
/// "..".
class CDirScannerImpl {
public:
    /// folder ends in "\". XNotFound.
    explicit CDirScannerImpl(const std::u16string& folder);
    ~CDirScannerImpl();
    CDirScannerImpl(const CDirScannerImpl&) = delete;
    CDirScannerImpl& operator=(const CDirScannerImpl&) = delete;

    bool IsAtEnd() const noexcept { return fAtEnd; }
    /// The next three raise XIllegalCallSequence at the end.
    const std::u16string& GetName() const;
    bool IsFolder() const;
    NSFileLib::SFileInfo GetInfo() const;
    void Advance();

private:
    const SPlatformEntry& GetEntry() const;

    IPlatformFileOps& fOps;
    PlatformHandle fScan = kNoPlatformHandle;
    SPlatformEntry fEntry;
    bool fAtEnd = false;
};

} // namespace NSFileLibInternals

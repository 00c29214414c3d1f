#pragma once

#include "FileLib/Implementation/OpenFileImpl.h"

#include <cstdint>
#include <memory>
#include <string>

namespace NSFileLibInternals {

/// Saving that never leaves a half-written target: an existing target is written as a second file
/// beside it, and the two change names at Commit. Without Commit an existing target stays as it is;
/// a new target, which is written in place, stays as far as it was written.
class CSafeOpenReadWriteFileImpl {
public:
    /// XCreate for a path that is none, XLocked for a target that is read-only.
    explicit CSafeOpenReadWriteFileImpl(const std::u16string& path);
    ~CSafeOpenReadWriteFileImpl();
    CSafeOpenReadWriteFileImpl(const CSafeOpenReadWriteFileImpl&) = delete;
    CSafeOpenReadWriteFileImpl& operator=(const CSafeOpenReadWriteFileImpl&) = delete;

    void Read(int64_t position, int64_t count, uint8_t* buffer) const;
    void Write(int64_t position, int64_t count, const uint8_t* buffer);
    int64_t GetSize() const;

    /// Once; every later operation is XIllegalCallSequence. A failure to delete the old data is
    /// raised although the target holds the new.
    void Commit();

private:
    COpenReadWriteFileImpl& GetOpenFile() const;

    std::unique_ptr<COpenReadWriteFileImpl> fOpenFile; // null after Commit
    std::u16string fTargetPath;
    std::u16string fTempPath; // empty without a swap
    bool fSwapAtCommit = false;
};

} // namespace NSFileLibInternals

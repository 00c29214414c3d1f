#pragma once

#include "FileLib/Implementation/OpenFileImpl.h"

#include <cstdint>
#include <memory>
#include <string>

namespace NSFileLibInternals {

/// Saving that never leaves a half-written target: an existing target is written as a second file
/// beside it, and the two change names at Commit. Without Commit an existing target stays as it is;
/// a new target, which is written in place, stays as far as it was written. A symbolic link stays,
/// and what it leads to is saved. On Windows the saved file is not hidden, as new files are not;
/// the other attributes of the old file and its rights of its own are lost there too.
class CSafeOpenReadWriteFileImpl {
public:
    /// XCreate for a text that is not a path, XLocked for a target that is read-only.
    explicit CSafeOpenReadWriteFileImpl(const std::u16string& path);
    ~CSafeOpenReadWriteFileImpl();
    CSafeOpenReadWriteFileImpl(const CSafeOpenReadWriteFileImpl&) = delete;
    CSafeOpenReadWriteFileImpl& operator=(const CSafeOpenReadWriteFileImpl&) = delete;

    void Read(int64_t position, int64_t count, uint8_t* buffer) const;
    void Write(int64_t position, int64_t count, const uint8_t* buffer);
    int64_t GetSize() const;

    /// Once; every later operation is XIllegalCallSequence. A failure loses no data, old or new:
    /// IOpenFiles.h says what is left where.
    void Commit();

private:
    COpenReadWriteFileImpl& GetOpenFile() const;

    std::unique_ptr<COpenReadWriteFileImpl> fOpenFile; // null after Commit
    std::u16string fTargetPath;                        // behind symbolic links
    std::u16string fTempPath;                          // empty without a swap
    bool fSwapAtCommit = false;
};

} // namespace NSFileLibInternals

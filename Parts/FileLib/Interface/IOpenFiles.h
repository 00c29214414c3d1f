#pragma once

#include "FileLib/Interface/IByteStreams.h"

namespace NSFileLib {

// Open files hold their handle until they are deleted. A reader or writer that one gives is the
// open file's own and lives as long as it. One thread uses one object.

class IOpenReadFile {
public:
    virtual ~IOpenReadFile() = default;
    virtual IByteReader* GetByteReader() = 0;
    virtual int32_t GetSize(int64_t* size) const = 0;
    virtual int32_t IsValid() const = 0;
};

class IOpenReadWriteFile {
public:
    virtual ~IOpenReadWriteFile() = default;
    virtual IByteReader* GetByteReader() = 0;
    virtual IByteWriter* GetByteWriter() = 0;
    virtual int32_t IsValid() const = 0;
};

/// What is written takes the place of the file at Commit; without one the file stays as it was. A
/// symbolic link stays a link, and the file that it leads to is saved. On Windows the saved file is
/// no longer hidden if it was.
class ISafeOpenReadWriteFile {
public:
    virtual ~ISafeOpenReadWriteFile() = default;
    virtual IByteReader* GetByteReader() = 0;
    virtual IByteWriter* GetByteWriter() = 0;
    /// Once, and the last operation on the file. A failure leaves all bytes on the disk: the file
    /// holds its old ones, and the new ones stand beside it in a file named "tmp", four hexadecimal
    /// digits and the file's extension. When only deleting fails, it is the other way round: the
    /// file holds the new bytes and that file the old. When renaming back fails too, the file's own
    /// name may be missing, and two such files hold the old and the new bytes.
    virtual int32_t Commit() = 0;
    virtual int32_t IsValid() const = 0;
};

} // namespace NSFileLib

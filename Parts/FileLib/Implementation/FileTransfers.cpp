#include "FileLib/Implementation/FileTransfers.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Platform/RaiseForError.h"

#include <algorithm>
#include <limits>

namespace NSFileLibInternals {

using NSLichen::XRead;
using NSLichen::XWrite;

int64_t WinGetFileSize(const CFileHandle& file) {
    uint64_t size = 0;
    CheckForError<XRead>(file.GetOps().ReadSize(file.Get(), size),
                         "GetFileSize failed with unrecognized error type");
    return static_cast<int64_t>(std::min<uint64_t>(size, std::numeric_limits<int64_t>::max()));
}

void WinReadFile(const CFileHandle& file, int64_t position, int64_t count, uint8_t* buffer) {
    if (count == 0) {
        return;
    }
    const auto wanted = static_cast<uint64_t>(count);
    uint64_t transferred = 0;
    CheckForError<XRead>(file.GetOps().Read(file.Get(), static_cast<uint64_t>(position), wanted,
                                            buffer, transferred),
                         "ReadFile failed with unrecognized error type");
    if (transferred != wanted) {
        NSLichen::Raise(XRead("ReadFile failed"));
    }
}

void WinWriteFile(const CFileHandle& file, int64_t position, int64_t count, const uint8_t* buffer) {
    if (count == 0) {
        return;
    }
    const auto wanted = static_cast<uint64_t>(count);
    uint64_t transferred = 0;
    CheckForError<XWrite>(file.GetOps().Write(file.Get(), static_cast<uint64_t>(position), wanted,
                                              buffer, transferred),
                          "WriteFile failed with unrecognized error type");
    if (transferred != wanted) {
        NSLichen::Raise(XWrite("WriteFile failed with unrecognized error type"));
    }
}

} // namespace NSFileLibInternals

#include "FileLib/Implementation/OpenFileImpl.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/FileTransfers.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

namespace {

constexpr const char* kOpenFailed = "CreateFile failed with unrecognized error type";

} // namespace

COpenReadFileImpl::COpenReadFileImpl(const std::u16string& path) {
    if (!WinDoesFileExist(RequireFilePath(path))) {
        NSLichen::Raise(NSLichen::XNotFound("WinDoesFileExist failed"));
    }
    CheckForError<NSLichen::XNotFound>(
        fFile.Open(path,
                   {EFileAccess::kRead, kShare_Read | kShare_Write, EFileCreation::kOpenExisting}),
        kOpenFailed);
}

void COpenReadFileImpl::Read(int64_t position, int64_t count, uint8_t* buffer) const {
    WinReadFile(fFile, position, count, buffer);
}

int64_t COpenReadFileImpl::GetSize() const {
    return WinGetFileSize(fFile);
}

COpenReadWriteFileImpl::COpenReadWriteFileImpl(const std::u16string& path, int32_t mode) {
    if (!IsNativeFilePath(path)) {
        NSLichen::Raise(NSLichen::XCreate("WinIsValidFilePath failed"));
    }
    const EFileCreation creation =
        mode == kOpenMode_CreateNew ? EFileCreation::kCreateNew : EFileCreation::kCreateAlways;
    CheckForError<NSLichen::XCreate>(
        fFile.Open(path, {EFileAccess::kReadWrite, kShare_None, creation}), kOpenFailed);
}

void COpenReadWriteFileImpl::Read(int64_t position, int64_t count, uint8_t* buffer) const {
    if (count > 0 && position >= GetSize()) {
        NSLichen::Raise(NSLichen::XRead("COpenReadWriteFileImpl::Read start pos beyond file end"));
    }
    WinReadFile(fFile, position, count, buffer);
}

void COpenReadWriteFileImpl::Write(int64_t position, int64_t count, const uint8_t* buffer) {
    WinWriteFile(fFile, position, count, buffer);
}

int64_t COpenReadWriteFileImpl::GetSize() const {
    return WinGetFileSize(fFile);
}

void COpenReadWriteFileImpl::Close() noexcept {
    fFile.Close();
}

} // namespace NSFileLibInternals

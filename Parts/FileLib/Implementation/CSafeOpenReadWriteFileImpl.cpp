#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Implementation/SwapFilesContents.h"
#include "FileLib/Implementation/UniqueNames.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

namespace {

constexpr int kDeleteAttempts = 6;
constexpr uint32_t kDeletePauseMilliseconds = 30;

// Virus scanners and indexers like to hold a file that was just closed. Answers the error of the
// first attempt when none succeeds.
uint32_t DeletePatiently(const std::u16string& path) {
    IPlatformFileOps& ops = GetPlatformFileOps();
    const uint32_t firstError = ops.Delete(path);
    uint32_t errorCode = firstError;
    for (int attempt = 1; attempt < kDeleteAttempts && errorCode != kError_None; ++attempt) {
        ops.Wait(kDeletePauseMilliseconds);
        errorCode = ops.Delete(path);
    }
    return errorCode == kError_None ? kError_None : firstError;
}

} // namespace

CSafeOpenReadWriteFileImpl::CSafeOpenReadWriteFileImpl(const std::u16string& path) {
    if (!IsNativePath(path)) {
        NSLichen::Raise(NSLichen::XCreate("WinIsValidPath failed"));
    }
    fTargetPath = GetPlatformFileOps().FollowLinks(path);
    if (!WinDoesFileExist(fTargetPath)) {
        fOpenFile = std::make_unique<COpenReadWriteFileImpl>(fTargetPath, kOpenMode_CreateNew);
        return;
    }
    if (WinIsReadOnly(fTargetPath)) {
        NSLichen::Raise(NSLichen::XLocked("file is read only"));
    }
    std::u16string folder;
    std::u16string name;
    SplitPath(fTargetPath, folder, name);
    fTempPath = WinCreateUniqueFile(folder, name);
    try {
        GetPlatformFileOps().CopyAccessRights(fTargetPath, fTempPath);
        fOpenFile = std::make_unique<COpenReadWriteFileImpl>(fTempPath, kOpenMode_CreateAlways);
    } catch (...) {
        GetPlatformFileOps().Delete(fTempPath);
        throw;
    }
    fSwapAtCommit = true;
}

CSafeOpenReadWriteFileImpl::~CSafeOpenReadWriteFileImpl() {
    try {
        fOpenFile.reset();
        if (fSwapAtCommit) {
            GetPlatformFileOps().Delete(fTempPath);
        }
    } catch (...) { // out of memory: a file too many, which is better than an end of the process
    }
}

COpenReadWriteFileImpl& CSafeOpenReadWriteFileImpl::GetOpenFile() const {
    if (fOpenFile == nullptr) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence("file is committed already"));
    }
    return *fOpenFile;
}

void CSafeOpenReadWriteFileImpl::Read(int64_t position, int64_t count, uint8_t* buffer) const {
    GetOpenFile().Read(position, count, buffer);
}

void CSafeOpenReadWriteFileImpl::Write(int64_t position, int64_t count, const uint8_t* buffer) {
    GetOpenFile().Write(position, count, buffer);
}

int64_t CSafeOpenReadWriteFileImpl::GetSize() const {
    return GetOpenFile().GetSize();
}

void CSafeOpenReadWriteFileImpl::Commit() {
    GetOpenFile().Close();
    fOpenFile.reset();
    if (!fSwapAtCommit) {
        return;
    }
    // From here on the second file holds the only copy of the new data or of the old.
    fSwapAtCommit = false;
    WinSwapFilesContents(fTargetPath, fTempPath);
    CheckForError<NSLichen::XDelete>(DeletePatiently(fTempPath),
                                     "DeleteFile failed with unrecognized error type");
}

} // namespace NSFileLibInternals

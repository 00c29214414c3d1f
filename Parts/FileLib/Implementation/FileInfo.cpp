#include "FileLib/Implementation/FileInfo.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CFileHandle.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

using NSFileLib::SFileInfo;
using NSLichen::XNotFound;
using NSLichen::XWrite;

namespace {

uint32_t ReadAttributesQuietly(const std::u16string& path, uint32_t& errorCode) {
    const CErrorBoxesOff boxesOff;
    return GetPlatformFileOps().ReadAttributes(path, errorCode);
}

uint32_t ReadAttributesQuietly(const std::u16string& path) {
    uint32_t errorCode = kError_None;
    return ReadAttributesQuietly(path, errorCode);
}

// Finding an entry needs a name, and a volume's root has none.
SPlatformEntry MakeRootEntry(const std::u16string& root) {
    uint32_t errorCode = kError_None;
    SPlatformEntry entry;
    entry.fName = GetNameOfPath(root);
    entry.fAttributes = ReadAttributesQuietly(WithoutTrailingSeparator(root), errorCode);
    if (entry.fAttributes == kAttributes_None) {
        RaiseForError<XNotFound>(errorCode,
                                 "GetFileAttributes failed with unrecognized error type");
    }
    return entry;
}

uint32_t WithFlag(uint32_t attributes, uint32_t bit, int32_t flag) {
    return flag != 0 ? attributes | bit : attributes & ~bit;
}

} // namespace

SFileInfo FileInfoOfEntry(const SPlatformEntry& entry) {
    SFileInfo info;
    info.fHidden = (entry.fAttributes & kAttribute_Hidden) != 0 ? 1 : 0;
    info.fReadOnly = (entry.fAttributes & kAttribute_ReadOnly) != 0 ? 1 : 0;
    info.fAlias = WinIsAliasName(entry.fName) ? 1 : 0;
    info.fCreationTime = static_cast<int64_t>(entry.fTimes.fCreation);
    info.fLastAccessTime = static_cast<int64_t>(entry.fTimes.fLastAccess);
    info.fLastWriteTime = static_cast<int64_t>(entry.fTimes.fLastWrite);
    info.fSizeHigh = static_cast<uint32_t>(entry.fSize >> 32);
    info.fSizeLow = static_cast<uint32_t>(entry.fSize);
    return info;
}

bool WinDoesFileExist(const std::u16string& path) {
    const uint32_t attributes = ReadAttributesQuietly(path);
    return attributes != kAttributes_None && (attributes & kAttribute_Directory) == 0;
}

bool WinDoesDirectoryExist(const std::u16string& path) {
    const uint32_t attributes = ReadAttributesQuietly(WithoutTrailingSeparator(path));
    return attributes != kAttributes_None && (attributes & kAttribute_Directory) != 0;
}

bool WinIsReadOnly(const std::u16string& path) {
    const uint32_t attributes = ReadAttributesQuietly(path);
    return attributes != kAttributes_None && (attributes & kAttribute_ReadOnly) != 0;
}

SFileInfo WinGetFileInfo(const std::u16string& path) {
    RequirePath(path);
    if (WinIsValidVolumePath(path)) {
        return FileInfoOfEntry(MakeRootEntry(path));
    }
    SPlatformEntry entry;
    CheckForError<XNotFound>(GetPlatformFileOps().FindEntry(WithoutTrailingSeparator(path), entry),
                             "WinGetFileInfo FindFirstFile failed");
    return FileInfoOfEntry(entry);
}

void WinSetFileInfo(const std::u16string& path, const SFileInfo& info) {
    RequireFilePath(path);
    IPlatformFileOps& ops = GetPlatformFileOps();
    // The entry, as for getting: attributes alone may be those of something else.
    SPlatformEntry entry;
    CheckForError<XNotFound>(ops.FindEntry(path, entry),
                             "GetFileAttributes failed with unrecognized error type");
    const uint32_t before = entry.fAttributes;
    uint32_t after = WithFlag(before, kAttribute_Hidden, info.fHidden);
    after = WithFlag(after, kAttribute_ReadOnly, info.fReadOnly);
    if (after != before) {
        CheckForError<XWrite>(ops.WriteAttributes(path, after),
                              "SetFileAttributes failed with unrecognized error type");
    }
    const SFileTimes times{static_cast<uint64_t>(info.fCreationTime),
                           static_cast<uint64_t>(info.fLastAccessTime),
                           static_cast<uint64_t>(info.fLastWriteTime)};
    if (times.fCreation == 0 && times.fLastAccess == 0 && times.fLastWrite == 0) {
        return;
    }
    CFileHandle file;
    CheckForError<XWrite>(
        file.Open(path, {EFileAccess::kWriteAttributes, kShare_Read | kShare_Write,
                         EFileCreation::kOpenExisting}),
        "CreateFile failed with unrecognized error type");
    CheckForError<XWrite>(ops.WriteTimes(file.Get(), times),
                          "SetFileTime failed with unrecognized error type");
}

std::u16string WinNormalizePath(const std::u16string& path) {
    std::u16string result;
    CheckForError<XNotFound>(GetPlatformFileOps().ReadLongPath(path, result),
                             "GetLongPathName failed with unrecognized error type");
    return result;
}

} // namespace NSFileLibInternals

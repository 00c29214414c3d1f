#include "FileLib/Implementation/UniqueNames.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

using NSLichen::XCreate;
using NSLichen::XNotFound;

namespace {

constexpr const char16_t* kUniqueNamePrefix = u"tmp";
constexpr uint32_t kLastUniqueNumber = 65535;

} // namespace

std::u16string WinCreateUniqueFile(const std::u16string& folder, const std::u16string& wanted) {
    constexpr const char* kFailed = "Failed to create unique file";
    std::u16string wantedStem;
    std::u16string wantedExtension;
    SplitFileName(wanted, wantedStem, wantedExtension);
    // Where the platform lets such a file be, nothing here could name it.
    if (!IsValidFileName(kUniqueNamePrefix + wantedExtension)) {
        NSLichen::Raise(XCreate(kFailed));
    }
    RequirePath(folder);
    IPlatformFileOps& ops = GetPlatformFileOps();
    std::u16string path;
    CheckForError<XCreate>(ops.MakeTempName(folder, kUniqueNamePrefix, 0, path),
                           "GetTempFileName() failed to create unique file");
    if (wantedExtension == kDefaultTempExtension) {
        return path;
    }
    std::u16string tempFolder;
    std::u16string tempName;
    SplitPath(path, tempFolder, tempName);
    std::u16string tempStem;
    std::u16string tempExtension;
    SplitFileName(tempName, tempStem, tempExtension);
    std::u16string result = tempFolder + tempStem + wantedExtension;
    const uint32_t errorCode = ops.Move(path, result, 0);
    if (errorCode != kError_None) {
        ops.Delete(path);
        RaiseForError<XCreate>(errorCode, kFailed);
    }
    return result;
}

std::u16string WinCreateUniqueDirectory(const std::u16string& folder) {
    RequirePath(folder);
    IPlatformFileOps& ops = GetPlatformFileOps();
    // Number 0 would create a file.
    for (uint32_t number = 1; number <= kLastUniqueNumber; ++number) {
        std::u16string path;
        CheckForError<XNotFound>(ops.MakeTempName(folder, kUniqueNamePrefix, number, path),
                                 "GetTempFileName failed with unrecognized error type");
        const uint32_t errorCode = ops.MakeFolder(path);
        if (errorCode == kError_None) {
            return WithTrailingSeparator(path);
        }
        if (errorCode != kError_AlreadyExists) {
            RaiseForError<XCreate>(errorCode, "Failed to create unique directory");
        }
    }
    NSLichen::Raise(XCreate("Failed to create unique directory"));
}

} // namespace NSFileLibInternals

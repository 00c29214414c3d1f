#include "FileLib/Implementation/UniqueNames.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

#include <utility>
#include <vector>

namespace NSFileLibInternals {

using NSLichen::XCreate;
using NSLichen::XNotFound;

namespace {

constexpr const char16_t* kUniqueNamePrefix = u"tmp";
constexpr uint32_t kLastUniqueNumber = 65535;
// Two files that share a number but not an extension are rare; so many in a row are not chance.
constexpr size_t kMostUniqueFiles = 100;

// Files that keep their numbers from being given out again; deleted at the end.
class CReservedFiles {
public:
    CReservedFiles() = default;
    ~CReservedFiles() {
        for (const std::u16string& path : fPaths) {
            try {
                fOps.Delete(path);
            } catch (...) { // out of memory: an empty file too many
            }
        }
    }
    CReservedFiles(const CReservedFiles&) = delete;
    CReservedFiles& operator=(const CReservedFiles&) = delete;

    // Creates one more; answers its path.
    const std::u16string& Add(const std::u16string& folder) {
        std::u16string path;
        fPaths.reserve(fPaths.size() + 1); // nothing may fail once the file is there
        CheckForError<XCreate>(fOps.MakeTempName(folder, kUniqueNamePrefix, 0, path),
                               "GetTempFileName() failed to create unique file");
        return fPaths.emplace_back(std::move(path));
    }
    void ReleaseLast() { fPaths.pop_back(); }
    size_t Count() const { return fPaths.size(); }

private:
    IPlatformFileOps& fOps = GetPlatformFileOps();
    std::vector<std::u16string> fPaths;
};

bool IsNameTaken(uint32_t errorCode) {
    return errorCode == kError_AlreadyExists || errorCode == kError_FileExists;
}

} // namespace

std::u16string WinCreateUniqueFile(const std::u16string& folder, const std::u16string& wanted) {
    constexpr const char* kFailed = "Failed to create unique file";
    std::u16string wantedStem;
    std::u16string wantedExtension;
    SplitFileName(wanted, wantedStem, wantedExtension);
    // The platform may allow such a file, but no path to it would be valid here.
    if (!IsValidFileName(kUniqueNamePrefix + wantedExtension)) {
        NSLichen::Raise(XCreate(kFailed));
    }
    RequirePath(folder);
    CReservedFiles reserved;
    while (reserved.Count() < kMostUniqueFiles) {
        const std::u16string path = reserved.Add(folder);
        std::u16string stem;
        std::u16string extension;
        SplitFileName(path, stem, extension);
        std::u16string result = stem + wantedExtension;
        const uint32_t errorCode = wantedExtension == kDefaultTempExtension
                                       ? kError_None
                                       : GetPlatformFileOps().Move(path, result, 0);
        if (errorCode == kError_None) {
            reserved.ReleaseLast();
            return result;
        }
        if (!IsNameTaken(errorCode)) {
            RaiseForError<XCreate>(errorCode, kFailed);
        }
    }
    NSLichen::Raise(XCreate(kFailed));
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

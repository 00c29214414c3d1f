#include "FileLib/Implementation/SwapFilesContents.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CFileHandle.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Implementation/UniqueNames.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"

namespace NSFileLibInternals {

using NSLichen::XNotFound;

namespace {

// A name that is kept free by an empty file until something else is moved there.
class CReservedName {
public:
    explicit CReservedName(const std::u16string& neighbour) {
        std::u16string folder;
        std::u16string name;
        SplitPath(neighbour, folder, name);
        fPath = WinCreateUniqueFile(folder, name);
    }
    ~CReservedName() {
        if (!fIsTaken) {
            try {
                GetPlatformFileOps().Delete(fPath);
            } catch (...) { // out of memory: an empty file more, but the failure under way counts
            }
        }
    }
    CReservedName(const CReservedName&) = delete;
    CReservedName& operator=(const CReservedName&) = delete;

    const std::u16string& GetPath() const { return fPath; }
    void Take() { fIsTaken = true; }

private:
    std::u16string fPath;
    bool fIsTaken = false;
};

void RequireFile(const std::u16string& path) {
    if (!WinDoesFileExist(RequireFilePath(path))) {
        NSLichen::Raise(XNotFound("WinDoesFileExist failed"));
    }
}

SFileTimes ReadCreationTime(const std::u16string& path) {
    CFileHandle file;
    CheckForError<XNotFound>(
        file.Open(path, {EFileAccess::kRead, kShare_Read, EFileCreation::kOpenExisting}),
        "CreateFile failed with unrecognized error type");
    SFileTimes times;
    CheckForError<XNotFound>(file.GetOps().ReadTimes(file.Get(), times),
                             "GetFileTime failed with unrecognized error type");
    return {times.fCreation, 0, 0};
}

void WriteCreationTime(const std::u16string& path, const SFileTimes& creationTime) {
    CFileHandle file;
    CheckForError<XNotFound>(
        file.Open(path, {EFileAccess::kReadWrite, kShare_Read, EFileCreation::kOpenExisting}),
        "CreateFile failed with unrecognized error type");
    CheckForError<XNotFound>(file.GetOps().WriteTimes(file.Get(), creationTime),
                             "SetFileTime failed with unrecognized error type");
}

} // namespace

void WinSwapFilesContents(const std::u16string& a, const std::u16string& b) {
    constexpr const char* kMoveFailed = "MoveFileEx() failed with unrecognized error type";
    RequireFile(a);
    RequireFile(b);
    IPlatformFileOps& ops = GetPlatformFileOps();
    CReservedName reserved(a);
    const std::u16string& c = reserved.GetPath();
    WriteCreationTime(b, ReadCreationTime(a));

    CheckForError<XNotFound>(ops.Move(a, c, kMove_Replace | kMove_WriteThrough), kMoveFailed);
    // From here on c holds what was in a, and must not be deleted even if it cannot go back.
    reserved.Take();
    uint32_t errorCode = ops.Move(b, a, kMove_WriteThrough);
    if (errorCode == kError_None) {
        errorCode = ops.Move(c, b, kMove_WriteThrough);
        if (errorCode == kError_None) {
            return;
        }
        ops.Move(a, b, kMove_WriteThrough);
    }
    ops.Move(c, a, kMove_WriteThrough);
    RaiseForError<XNotFound>(errorCode, kMoveFailed);
}

} // namespace NSFileLibInternals

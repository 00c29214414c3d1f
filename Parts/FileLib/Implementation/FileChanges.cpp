#include "FileLib/Implementation/FileChanges.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"

namespace NSFileLibInternals {

void WinDeletePhysicalFile(const std::u16string& path) {
    CheckForError<NSLichen::XNotFound>(GetPlatformFileOps().Delete(RequireFilePath(path)),
                                       "DeleteFile failed with unrecognized error type");
}

void WinMoveFileEx(const std::u16string& from, const std::u16string& to, uint32_t flags) {
    CheckForError<NSLichen::XNotFound>(GetPlatformFileOps().Move(from, to, flags),
                                       "MoveFileEx() failed with unrecognized error type");
}

void WinCreatePhysicalDirectory(const std::u16string& path) {
    CheckForError<NSLichen::XCreate>(
        GetPlatformFileOps().MakeFolder(WithoutTrailingSeparator(path)), "CreateDirectory failed");
}

void WinDeletePhysicalDirectory(const std::u16string& path) {
    CheckForError<NSLichen::XDelete>(
        GetPlatformFileOps().RemoveFolder(WithoutTrailingSeparator(RequirePath(path))),
        "RemoveDirectory failed with unrecognized error type");
}

} // namespace NSFileLibInternals

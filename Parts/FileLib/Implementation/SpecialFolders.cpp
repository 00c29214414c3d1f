#include "FileLib/Implementation/SpecialFolders.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/NativePaths.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

using NSLichen::XNotFound;

namespace {

bool LocateFolder(int32_t number, ShellItem& item) {
    return !IsOLEFailure(GetPlatformFileOps().LocateSpecialFolder(number, item));
}

bool FindSpecialFolder(int32_t number, std::u16string& path) {
    ShellItem item;
    return LocateFolder(number, item) && GetPlatformFileOps().ReadShellItemPath(item, path);
}

std::u16string MakeFolderIn(const std::u16string& folder, const std::u16string& name) {
    if (name.empty()) {
        return folder;
    }
    const std::u16string path = JoinPath(folder, name);
    if (!IsValidFileName(name) || !IsNativePath(path)) {
        NSLichen::Raise(XNotFound("WinIsValidPath failed"));
    }
    const uint32_t errorCode = GetPlatformFileOps().MakeFolder(path);
    if (errorCode != kError_AlreadyExists) {
        CheckForError<XNotFound>(errorCode, "CreateDirectory failed with unrecognized error type");
    }
    return WithTrailingSeparator(path);
}

std::u16string MakeProductFolder(const std::u16string& folder, const std::u16string& maker,
                                 const std::u16string& product) {
    return MakeFolderIn(MakeFolderIn(WithTrailingSeparator(folder), maker), product);
}

} // namespace

std::u16string WinGetTempPath() {
    std::u16string path;
    CheckForError<XNotFound>(GetPlatformFileOps().FindTempFolder(path),
                             "GetTempPath failed with unrecognized error type");
    return WithTrailingSeparator(path);
}

std::u16string WinGetWindowsPath() {
    std::u16string path;
    CheckForError<XNotFound>(GetPlatformFileOps().FindWindowsFolder(path),
                             "GetWindowsDirectory failed with unrecognized error type");
    // Room for 260 characters, its terminator among them.
    if (path.size() >= kMaxPathLength) {
        NSLichen::Raise(XNotFound("GetWindowsDirectory failed - folder name to large"));
    }
    return WithTrailingSeparator(path);
}

std::u16string WinGetSpecialFolderPath(int32_t number) {
    ShellItem item;
    if (!LocateFolder(number, item)) {
        NSLichen::Raise(XNotFound("WinGetSpecialFolderPath failed"));
    }
    std::u16string path;
    if (!GetPlatformFileOps().ReadShellItemPath(item, path)) {
        NSLichen::Raise(XNotFound("SHGetPathFromIDList failed"));
    }
    return WithTrailingSeparator(path);
}

std::u16string WinGetProductFolderPath(int32_t number, const std::u16string& maker,
                                       const std::u16string& product) {
    return MakeProductFolder(WinGetSpecialFolderPath(number), maker, product);
}

std::u16string WinGetAppDataPathImpl(const std::u16string& maker, const std::u16string& product,
                                     bool allUsers) {
    std::u16string path;
    if (!FindSpecialFolder(allUsers ? kSpecialFolder_CommonAppData : kSpecialFolder_AppData,
                           path) &&
        !FindSpecialFolder(kSpecialFolder_Windows, path)) {
        path = WinGetWindowsPath();
    }
    return MakeProductFolder(path, maker, product);
}

std::u16string WinGetExecutablePath() {
    std::u16string path;
    CheckForError<XNotFound>(GetPlatformFileOps().FindExecutable(path),
                             "GetModuleFileName failed with unrecognized error type");
    return StripLongPathPrefix(path);
}

} // namespace NSFileLibInternals

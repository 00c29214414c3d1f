// Folders and their children.
#include "FileLib/Glue/CDirScannerGlue.h"
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

int32_t CFileLibGlue::GetChildInfo(const IDirSpec* folder, const char16_t* name, SFileInfo* info,
                                   int32_t* isFolder) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, info, isFolder}), [&] {
        PutUnfinished(info);
        PutUnfinished(isFolder);
        bool found = false;
        *info = CFileLibImpl::GetChildInfo(PathOf(folder), name, found);
        PutFlag(isFolder, found);
    });
}

int32_t CFileLibGlue::GetDirInfo(const IDirSpec* folder, SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {folder, info}), [&] {
        PutUnfinished(info);
        *info = WinGetFileInfo(PathOf(folder));
    });
}

IDirSpec* CFileLibGlue::CreateDir(const IDirSpec* folder, const char16_t* name, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return CFileLibImpl::CreateFolder(PathOf(folder), name);
    });
}

int32_t CFileLibGlue::DeletePhysicalDirectory(const IDirSpec* folder) {
    return RunGuarded(CheckCall(IsValid(), {folder}),
                      [&] { WinDeletePhysicalDirectory(PathOf(folder)); });
}

int32_t CFileLibGlue::DoesChildFileExist(const IDirSpec* folder, const char16_t* name,
                                         int32_t* exists) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, exists}), [&] {
        PutUnfinished(exists);
        PutFlag(exists, CFileLibImpl::DoesChildFileExist(PathOf(folder), name));
    });
}

int32_t CFileLibGlue::DoesChildDirExist(const IDirSpec* folder, const char16_t* name,
                                        int32_t* exists) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, exists}), [&] {
        PutUnfinished(exists);
        PutFlag(exists, CFileLibImpl::DoesChildFolderExist(PathOf(folder), name));
    });
}

IFileSpec* CFileLibGlue::GetChildFile(const IDirSpec* folder, const char16_t* name,
                                      int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return CFileLibImpl::GetChildFile(PathOf(folder), name);
    });
}

IDirSpec* CFileLibGlue::GetChildDirectory(const IDirSpec* folder, const char16_t* name,
                                          int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return CFileLibImpl::GetChildDirectory(PathOf(folder), name);
    });
}

IDirSpec* CFileLibGlue::GetParentOfDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder}), status,
                                    [&] { return GetParentPath(RequirePath(PathOf(folder))); });
}

IDirScanner* CFileLibGlue::CreateDirScanner(const IDirSpec* folder, int32_t* status) {
    return CreateGuarded<IDirScanner>(CheckCall(IsValid(), {folder}), status, [&] {
        return new CDirScannerGlue(std::make_unique<CDirScannerImpl>(PathOf(folder)));
    });
}

IVolumeSpec* CFileLibGlue::GetVolumeOfDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CVolumeSpecGlue>(CheckCall(IsValid(), {folder}), status, [&] {
        return GetVolumeOfPath(RequirePath(PathOf(folder)));
    });
}

IDirSpec* CFileLibGlue::CreateUniqueDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder}), status,
                                    [&] { return WinCreateUniqueDirectory(PathOf(folder)); });
}

} // namespace NSFileLibInternals

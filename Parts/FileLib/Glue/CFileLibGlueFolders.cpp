// Folders and their children.
#include "FileLib/Glue/CDirScannerGlue.h"
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/FileInfoRecords.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

int32_t CFileLibGlue::GetChildInfo(const IDirSpec* folder, const char16_t* name,
                                   NSFileLib::SFileInfo* info, int32_t* isFolder) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, info, isFolder}), [&] {
        PutUnfinished(info);
        PutUnfinished(isFolder);
        bool found = false;
        *info = ToInterface(fImpl.GetChildInfo(PathOf(folder), name, found));
        PutFlag(isFolder, found);
    });
}

int32_t CFileLibGlue::GetDirInfo(const IDirSpec* folder, NSFileLib::SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {folder, info}), [&] {
        PutUnfinished(info);
        *info = ToInterface(fImpl.GetFolderInfo(PathOf(folder)));
    });
}

IDirSpec* CFileLibGlue::CreateDir(const IDirSpec* folder, const char16_t* name, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder, name}), status,
                                    [&] { return fImpl.CreateFolder(PathOf(folder), name); });
}

int32_t CFileLibGlue::DeletePhysicalDirectory(const IDirSpec* folder) {
    return RunGuarded(CheckCall(IsValid(), {folder}),
                      [&] { fImpl.DeletePhysicalDirectory(PathOf(folder)); });
}

int32_t CFileLibGlue::DoesChildFileExist(const IDirSpec* folder, const char16_t* name,
                                         int32_t* exists) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, exists}), [&] {
        PutUnfinished(exists);
        PutFlag(exists, fImpl.DoesChildFileExist(PathOf(folder), name));
    });
}

int32_t CFileLibGlue::DoesChildDirExist(const IDirSpec* folder, const char16_t* name,
                                        int32_t* exists) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, exists}), [&] {
        PutUnfinished(exists);
        PutFlag(exists, fImpl.DoesChildFolderExist(PathOf(folder), name));
    });
}

IFileSpec* CFileLibGlue::GetChildFile(const IDirSpec* folder, const char16_t* name,
                                      int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {folder, name}), status,
                                     [&] { return fImpl.GetChildFile(PathOf(folder), name); });
}

IDirSpec* CFileLibGlue::GetChildDirectory(const IDirSpec* folder, const char16_t* name,
                                          int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder, name}), status,
                                    [&] { return fImpl.GetChildDirectory(PathOf(folder), name); });
}

IDirSpec* CFileLibGlue::GetParentOfDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder}), status,
                                    [&] { return fImpl.GetParentOfFolder(PathOf(folder)); });
}

IDirScanner* CFileLibGlue::CreateDirScanner(const IDirSpec* folder, int32_t* status) {
    return CreateGuarded<IDirScanner>(CheckCall(IsValid(), {folder}), status, [&] {
        return new CDirScannerGlue(fImpl.CreateDirScanner(PathOf(folder)));
    });
}

IVolumeSpec* CFileLibGlue::GetVolumeOfDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CVolumeSpecGlue>(CheckCall(IsValid(), {folder}), status,
                                       [&] { return fImpl.GetVolumeOfFolder(PathOf(folder)); });
}

IDirSpec* CFileLibGlue::CreateUniqueDir(const IDirSpec* folder, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {folder}), status,
                                    [&] { return fImpl.CreateUniqueFolder(PathOf(folder)); });
}

} // namespace NSFileLibInternals

// Volumes and well-known places.
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/CVolumesGlue.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "FileLib/Platform/PlatformCodes.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

IVolumes* CFileLibGlue::GetVolumes(int32_t* status) {
    return CreateGuarded<IVolumes>(CheckCall(IsValid(), {}), status,
                                   [] { return new CVolumesGlue(WinGetVolumes()); });
}

IVolumeSpec* CFileLibGlue::GetBootVolume(int32_t* status) {
    return CreateSpec<CVolumeSpecGlue>(CheckCall(IsValid(), {}), status, WinGetBootVolume);
}

int32_t CFileLibGlue::GetFreeSpace(const IVolumeSpec* volume, int64_t* freeBytes,
                                   int64_t* totalBytes) {
    return RunGuarded(CheckCall(IsValid(), {volume, freeBytes, totalBytes}), [&] {
        PutUnfinished(freeBytes);
        PutUnfinished(totalBytes);
        const SDiskSpace space = WinGetDiskFreeSpace(PathOf(volume));
        *freeBytes = static_cast<int64_t>(space.fFreeForUser);
        *totalBytes = static_cast<int64_t>(space.fTotal);
    });
}

int32_t CFileLibGlue::GetVolumeType(const IVolumeSpec* volume, int32_t* type) {
    return RunGuarded(CheckCall(IsValid(), {volume, type}), [&] {
        PutUnfinished(type);
        *type = static_cast<int32_t>(WinGetVolumeType(PathOf(volume)));
    });
}

int32_t CFileLibGlue::GetVolumeInfo(const IVolumeSpec* volume, SVolumeInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {volume, info}), [&] {
        PutUnfinished(info);
        const SPlatformVolume mounted = WinGetMountedVolumeInfo(PathOf(volume));
        PutText(info->fLabel, mounted.fLabel);
        PutText(info->fFileSystem, mounted.fFileSystem);
        info->fSerialNumber = mounted.fSerialNumber;
        info->fMaxComponentLength = mounted.fMaxComponentLength;
        info->fFlags = mounted.fFlags;
    });
}

IDirSpec* CFileLibGlue::GetRootDir(const IVolumeSpec* volume, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {volume}), status,
                                    [&] { return CFileLibImpl::MakeVolumePath(PathOf(volume)); });
}

IDirSpec* CFileLibGlue::GetTemporaryDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status, WinGetTempPath);
}

IDirSpec* CFileLibGlue::GetDesktopDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [] { return WinGetSpecialFolderPath(kSpecialFolder_Desktop); });
}

IDirSpec* CFileLibGlue::GetDocumentsDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status, [] {
        return WinGetSpecialFolderPath(kSpecialFolder_Personal);
    });
}

IDirSpec* CFileLibGlue::GetSpecialDir(int32_t number, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [&] { return WinGetSpecialFolderPath(number); });
}

IDirSpec* CFileLibGlue::GetProductDir(int32_t number, const char16_t* maker,
                                      const char16_t* product, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {maker, product}), status, [&] {
        return WinGetProductFolderPath(number, maker, product);
    });
}

IDirSpec* CFileLibGlue::GetAppDataDir(const char16_t* maker, const char16_t* product,
                                      int32_t allUsers, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {maker, product}), status, [&] {
        return WinGetAppDataPathImpl(maker, product, allUsers != 0);
    });
}

IFileSpec* CFileLibGlue::GetExecutableFile(int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {}), status, WinGetExecutablePath);
}

} // namespace NSFileLibInternals

// Volumes and well-known places.
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/CVolumesGlue.h"
#include "FileLib/Glue/FileInfoRecords.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

IVolumes* CFileLibGlue::GetVolumes(int32_t* status) {
    return CreateGuarded<IVolumes>(CheckCall(IsValid(), {}), status,
                                   [this] { return new CVolumesGlue(fImpl.GetVolumes()); });
}

IVolumeSpec* CFileLibGlue::GetBootVolume(int32_t* status) {
    return CreateSpec<CVolumeSpecGlue>(CheckCall(IsValid(), {}), status,
                                       [this] { return fImpl.GetBootVolume(); });
}

int32_t CFileLibGlue::GetFreeSpace(const IVolumeSpec* volume, int64_t* freeBytes,
                                   int64_t* totalBytes) {
    return RunGuarded(CheckCall(IsValid(), {volume, freeBytes, totalBytes}), [&] {
        PutUnfinished(freeBytes);
        PutUnfinished(totalBytes);
        const SDiskSpace space = fImpl.GetDiskSpace(PathOf(volume));
        *freeBytes = static_cast<int64_t>(space.fFreeForUser);
        *totalBytes = static_cast<int64_t>(space.fTotal);
    });
}

int32_t CFileLibGlue::GetVolumeType(const IVolumeSpec* volume, int32_t* type) {
    return RunGuarded(CheckCall(IsValid(), {volume, type}), [&] {
        PutUnfinished(type);
        *type = static_cast<int32_t>(fImpl.GetVolumeType(PathOf(volume)));
    });
}

int32_t CFileLibGlue::GetVolumeInfo(const IVolumeSpec* volume, NSFileLib::SVolumeInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {volume, info}), [&] {
        PutUnfinished(info);
        PutVolumeInfo(info, fImpl.GetVolumeInfo(PathOf(volume)));
    });
}

IDirSpec* CFileLibGlue::GetRootDir(const IVolumeSpec* volume, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {volume}), status,
                                    [&] { return fImpl.GetRootFolder(PathOf(volume)); });
}

IDirSpec* CFileLibGlue::GetTemporaryDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [this] { return fImpl.GetTemporaryFolder(); });
}

IDirSpec* CFileLibGlue::GetDesktopDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [this] { return fImpl.GetDesktopFolder(); });
}

IDirSpec* CFileLibGlue::GetDocumentsDir(int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [this] { return fImpl.GetDocumentsFolder(); });
}

IDirSpec* CFileLibGlue::GetSpecialDir(int32_t number, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {}), status,
                                    [&] { return fImpl.GetSpecialFolder(number); });
}

IDirSpec* CFileLibGlue::GetProductDir(int32_t number, const char16_t* maker,
                                      const char16_t* product, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {maker, product}), status,
                                    [&] { return fImpl.GetProductFolder(number, maker, product); });
}

IDirSpec* CFileLibGlue::GetAppDataDir(const char16_t* maker, const char16_t* product,
                                      int32_t allUsers, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {maker, product}), status, [&] {
        return fImpl.GetAppDataFolder(maker, product, allUsers != 0);
    });
}

IFileSpec* CFileLibGlue::GetExecutableFile(int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {}), status,
                                     [this] { return fImpl.GetExecutableFile(); });
}

} // namespace NSFileLibInternals

// The second interface: specs from and to native paths, and aliases.
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Implementation/CFileLibImpl.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

namespace {

template <class ISpec>
int32_t GetPath(int32_t isValid, const ISpec* spec, char16_t* nativePath) {
    return RunGuarded(CheckCall(isValid, {spec, nativePath}), [&] {
        PutUnfinished(nativePath);
        PutText(nativePath, PathOf(spec));
    });
}

} // namespace

IVolumeSpec* CFileLibGlue::CreateVolumeSpec(const char16_t* nativePath, int32_t* status) {
    return CreateSpec<CVolumeSpecGlue>(CheckCall(IsValid(), {nativePath}), status,
                                       [&] { return CFileLibImpl::MakeVolumePath(nativePath); });
}

int32_t CFileLibGlue::GetVolumePath(const IVolumeSpec* volume, char16_t* nativePath) {
    return GetPath(IsValid(), volume, nativePath);
}

IDirSpec* CFileLibGlue::CreateDirSpec(const char16_t* nativePath, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {nativePath}), status,
                                    [&] { return CFileLibImpl::MakeFolderPath(nativePath); });
}

int32_t CFileLibGlue::GetDirPath(const IDirSpec* folder, char16_t* nativePath) {
    return GetPath(IsValid(), folder, nativePath);
}

IFileSpec* CFileLibGlue::CreateFileSpec(const char16_t* nativePath, int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {nativePath}), status,
                                     [&] { return CFileLibImpl::MakeFilePath(nativePath); });
}

int32_t CFileLibGlue::GetFilePath(const IFileSpec* file, char16_t* nativePath) {
    return GetPath(IsValid(), file, nativePath);
}

int32_t CFileLibGlue::CreateAlias(const IDirSpec* folder, const char16_t* name,
                                  const IFileSpec* source) {
    return RunGuarded(CheckCall(IsValid(), {folder, name, source}), [&] {
        CFileLibImpl::CreateAlias(CFileLibImpl::MakeChildPath(PathOf(folder), name),
                                  PathOf(source));
    });
}

} // namespace NSFileLibInternals

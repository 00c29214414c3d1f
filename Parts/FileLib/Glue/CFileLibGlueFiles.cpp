// Opening files, and what is done to a file as a whole.
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/FileInfoRecords.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/OpenFileGlue.h"
#include "FileLib/Glue/SpecGlue.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

IOpenReadFile* CFileLibGlue::OpenForRead(const IFileSpec* file, int32_t* status) {
    return CreateGuarded<IOpenReadFile>(CheckCall(IsValid(), {file}), status, [&] {
        return new COpenReadFileGlue(fImpl.OpenRead(PathOf(file)));
    });
}

IOpenReadWriteFile* CFileLibGlue::OpenForReadWrite(const IDirSpec* folder, const char16_t* name,
                                                   int32_t* status) {
    return CreateGuarded<IOpenReadWriteFile>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return new COpenReadWriteFileGlue(
            fImpl.OpenReadWrite(fImpl.MakeChildFilePath(PathOf(folder), name)));
    });
}

ISafeOpenReadWriteFile* CFileLibGlue::OpenForSafeSave(const IDirSpec* folder, const char16_t* name,
                                                      int32_t* status) {
    return CreateGuarded<ISafeOpenReadWriteFile>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return new CSafeOpenReadWriteFileGlue(
            fImpl.OpenSafeReadWrite(fImpl.MakeChildFilePath(PathOf(folder), name)));
    });
}

int32_t CFileLibGlue::SwapFilesContents(const IFileSpec* a, const IFileSpec* b) {
    return RunGuarded(CheckCall(IsValid(), {a, b}),
                      [&] { fImpl.SwapFilesContents(PathOf(a), PathOf(b)); });
}

int32_t CFileLibGlue::DeletePhysicalFile(const IFileSpec* file) {
    return RunGuarded(CheckCall(IsValid(), {file}),
                      [&] { fImpl.DeletePhysicalFile(PathOf(file)); });
}

int32_t CFileLibGlue::GetFileInfo(const IFileSpec* file, NSFileLib::SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {file, info}), [&] {
        PutUnfinished(info);
        *info = ToInterface(fImpl.GetFileInfo(PathOf(file)));
    });
}

int32_t CFileLibGlue::SetFileInfo(const IFileSpec* file, const NSFileLib::SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {file, info}),
                      [&] { fImpl.SetFileInfo(PathOf(file), FromInterface(*info)); });
}

IDirSpec* CFileLibGlue::GetParentOfFile(const IFileSpec* file, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {file}), status,
                                    [&] { return fImpl.GetParentOfFile(PathOf(file)); });
}

int32_t CFileLibGlue::ResolvePossibleAlias(const IFileSpec* alias, IDirSpec** folder,
                                           IFileSpec** file) {
    return RunGuarded(CheckCall(IsValid(), {alias, folder, file}), [&] {
        *folder = nullptr;
        *file = nullptr;
        const SSpecPath target = fImpl.ResolvePossibleAlias(PathOf(alias));
        if (target.fKind == ESpecKind::kFile) {
            *file = new CFileSpecGlue(target.fPath);
        } else {
            *folder = new CDirSpecGlue(target.fPath);
        }
    });
}

IFileSpec* CFileLibGlue::CreateUniqueFile(const IDirSpec* folder, const char16_t* name,
                                          int32_t* status) {
    return CreateSpec<CFileSpecGlue>(CheckCall(IsValid(), {folder, name}), status,
                                     [&] { return fImpl.CreateUniqueFile(PathOf(folder), name); });
}

} // namespace NSFileLibInternals

// Opening files, and what is done to a file as a whole.
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/OpenFileGlue.h"
#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"

namespace NSFileLibInternals {

using namespace NSFileLib;

IOpenReadFile* CFileLibGlue::OpenForRead(const IFileSpec* file, int32_t* status) {
    return CreateGuarded<IOpenReadFile>(CheckCall(IsValid(), {file}), status, [&] {
        return new COpenReadFileGlue(std::make_unique<COpenReadFileImpl>(PathOf(file)));
    });
}

IOpenReadWriteFile* CFileLibGlue::OpenForReadWrite(const IDirSpec* folder, const char16_t* name,
                                                   int32_t* status) {
    return CreateGuarded<IOpenReadWriteFile>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return new COpenReadWriteFileGlue(std::make_unique<COpenReadWriteFileImpl>(
            CFileLibImpl::MakeChildPath(PathOf(folder), name), kOpenMode_CreateAlways));
    });
}

ISafeOpenReadWriteFile* CFileLibGlue::OpenForSafeSave(const IDirSpec* folder, const char16_t* name,
                                                      int32_t* status) {
    return CreateGuarded<ISafeOpenReadWriteFile>(CheckCall(IsValid(), {folder, name}), status, [&] {
        return new CSafeOpenReadWriteFileGlue(std::make_unique<CSafeOpenReadWriteFileImpl>(
            CFileLibImpl::MakeChildPath(PathOf(folder), name)));
    });
}

int32_t CFileLibGlue::SwapFilesContents(const IFileSpec* a, const IFileSpec* b) {
    return RunGuarded(CheckCall(IsValid(), {a, b}),
                      [&] { WinSwapFilesContents(PathOf(a), PathOf(b)); });
}

int32_t CFileLibGlue::DeletePhysicalFile(const IFileSpec* file) {
    return RunGuarded(CheckCall(IsValid(), {file}), [&] { WinDeletePhysicalFile(PathOf(file)); });
}

int32_t CFileLibGlue::GetFileInfo(const IFileSpec* file, SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {file, info}), [&] {
        PutUnfinished(info);
        *info = WinGetFileInfo(PathOf(file));
    });
}

int32_t CFileLibGlue::SetFileInfo(const IFileSpec* file, const SFileInfo* info) {
    return RunGuarded(CheckCall(IsValid(), {file, info}),
                      [&] { WinSetFileInfo(PathOf(file), *info); });
}

IDirSpec* CFileLibGlue::GetParentOfFile(const IFileSpec* file, int32_t* status) {
    return CreateSpec<CDirSpecGlue>(CheckCall(IsValid(), {file}), status,
                                    [&] { return GetParentPath(RequireFilePath(PathOf(file))); });
}

int32_t CFileLibGlue::ResolvePossibleAlias(const IFileSpec* alias, IDirSpec** folder,
                                           IFileSpec** file) {
    return RunGuarded(CheckCall(IsValid(), {alias, folder, file}), [&] {
        *folder = nullptr;
        *file = nullptr;
        const SSpecPath target = CFileLibImpl::ResolvePossibleAlias(PathOf(alias));
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
                                     [&] { return WinCreateUniqueFile(PathOf(folder), name); });
}

} // namespace NSFileLibInternals

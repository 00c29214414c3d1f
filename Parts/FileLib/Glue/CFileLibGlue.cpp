#include "FileLib/Glue/CFileLibGlue.h"

#include "Failure/Raising/Raise.h"
#include "FileLib/Glue/GlueGuard.h"
#include "FileLib/Glue/SpecGlue.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

#include <stdexcept>

namespace NSFileLibInternals {

using namespace NSFileLib;

namespace {

// In place: the wish is read before the buffer is marked.
template <class TMake>
int32_t MakeValidName(int32_t isValid, char16_t* name, const TMake& make) {
    return RunGuarded(CheckCall(isValid, {name}), [&] {
        const std::u16string wanted = TakeText(name);
        PutUnfinished(name);
        PutText(name, make(wanted));
    });
}

} // namespace

int32_t CFileLibGlue::SetDebugger(NSLichen::IDebugger* /*debugger*/) {
    return RunGuarded(CheckCall(IsValid(), {}), [] {
        NSLichen::Raise(std::logic_error("Can't set debugger when using static lib"));
    });
}

int32_t CFileLibGlue::InterpretURL(const char* url, IVolumeSpec** volume, IDirSpec** folder,
                                   IFileSpec** file) {
    return RunGuarded(CheckCall(IsValid(), {url, volume, folder, file}), [&] {
        *volume = nullptr;
        *folder = nullptr;
        *file = nullptr;
        const SSpecPath named = CFileLibImpl::InterpretURL(url);
        if (named.fKind == ESpecKind::kFile) {
            *file = new CFileSpecGlue(named.fPath);
        } else {
            *folder = new CDirSpecGlue(named.fPath);
        }
    });
}

int32_t CFileLibGlue::GetFileURL(const IFileSpec* file, char* url) {
    return RunGuarded(CheckCall(IsValid(), {file, url}), [&] {
        PutUnfinished(url);
        PutText(url, CFileLibImpl::GetURL(PathOf(file)));
    });
}

int32_t CFileLibGlue::GetDirURL(const IDirSpec* folder, char* url) {
    return RunGuarded(CheckCall(IsValid(), {folder, url}), [&] {
        PutUnfinished(url);
        PutText(url, CFileLibImpl::GetURL(PathOf(folder)));
    });
}

int32_t CFileLibGlue::GetNativeFileName(const IFileSpec* file, char16_t* name) {
    return RunGuarded(CheckCall(IsValid(), {file, name}), [&] {
        PutUnfinished(name);
        PutText(name, GetNameOfPath(PathOf(file)));
    });
}

int32_t CFileLibGlue::GetNativeDirName(const IDirSpec* folder, char16_t* name) {
    return RunGuarded(CheckCall(IsValid(), {folder, name}), [&] {
        PutUnfinished(name);
        PutText(name, GetNameOfPath(PathOf(folder)));
    });
}

int32_t CFileLibGlue::MakeValidVolumeName(char16_t* name) {
    return MakeValidName(IsValid(), name, NSFileLibInternals::MakeValidVolumeName);
}

int32_t CFileLibGlue::MakeValidFileName(char16_t* name) {
    return MakeValidName(IsValid(), name, [](const std::u16string& wanted) {
        return NSFileLibInternals::MakeValidFileName(wanted, kMaxNameLength);
    });
}

int32_t CFileLibGlue::MakeValidDirName(char16_t* name) {
    return MakeValidName(IsValid(), name, NSFileLibInternals::MakeValidFolderName);
}

int32_t CFileLibGlue::SplitFileName(const char16_t* name, char16_t* stem, char16_t* extension) {
    return RunGuarded(CheckCall(IsValid(), {name, stem, extension}), [&] {
        const std::u16string whole(name);
        PutUnfinished(stem);
        PutUnfinished(extension);
        std::u16string front;
        std::u16string back;
        NSFileLibInternals::SplitFileName(whole, front, back);
        PutText(stem, front);
        PutText(extension, back);
    });
}

int32_t CFileLibGlue::UnsupportedOperation() {
    return kFileLibStatus_LogicError;
}

int32_t CFileLibGlue::UnsupportedQuery() {
    return 0;
}

} // namespace NSFileLibInternals

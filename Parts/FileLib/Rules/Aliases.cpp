#include "FileLib/Rules/Aliases.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Rules/KnownErrors.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

[[noreturn]] void RaiseUnresolved(const char* text) {
    RaiseWithTarget(XResolve(text), ReferenceWord());
}

bool Exists(const std::u16string& path) {
    return WinDoesFileExist(path) || WinDoesDirectoryExist(path);
}

void RequireAliasFile(const std::u16string& alias) {
    // The entry and not the attributes, which could be those of what the alias leads to.
    SPlatformEntry entry;
    if (!IsNativePath(alias) ||
        GetPlatformFileOps().FindEntry(WithoutTrailingSeparator(alias), entry) != kError_None) {
        Raise(XNotFound("CFileLibImpl::ResolvePossibleAlias alias file does not exist"));
    }
    if ((entry.fAttributes & kAttribute_Directory) != 0) {
        Raise(XNotFound("CFileLibImpl::ResolvePossibleAlias alias file is not a file"));
    }
    if (!WinIsAliasName(alias)) {
        RaiseUnresolved("CFileLibImpl::ResolvePossibleAlias alias file is not an alias");
    }
}

ShellItem LoadTarget(const std::u16string& alias) {
    ShellItem target;
    ELinkStep step = ELinkStep::kCreate;
    const uint32_t result = GetPlatformFileOps().LoadShellLink(alias, target, step);
    if (IsOLEFailure(result) && step == ELinkStep::kLoad) {
        if (result == kOLE_BadFormat) {
            RaiseUnresolved("CFileLibImpl::ResolvePossibleAlias alias file is not an alias");
        }
        WinThrowExceptionForKnownOLEError(result);
        RaiseUnresolved("persistFile->Load failed");
    }
    WinHandleOLEError(result);
    if (target.empty()) {
        RaiseUnresolved("shellLink->GetIDList returned NULL but no error");
    }
    return target;
}

} // namespace

void WinCreateAlias(const std::u16string& alias, const std::u16string& source) {
    if (!IsNativePath(source) || !Exists(source)) {
        Raise(XNotFound("CFileLibImpl::CreateAlias source file does not exist"));
    }
    if (!WinDoesFileExist(source)) {
        Raise(XNotFound("CFileLibImpl::CreateAlias source file is not a file"));
    }
    if (!IsNativeFilePath(alias)) {
        Raise(XCreate("WinIsValidFilePath failed"));
    }
    WinHandleOLEError(GetPlatformFileOps().CreateShellLink(alias, source, u"Shortcut"));
}

std::u16string WinFindShortcutTarget(const std::u16string& alias) {
    const ShellItem target = LoadTarget(alias);
    IPlatformFileOps& ops = GetPlatformFileOps();
    std::u16string path;
    if (!ops.ReadShellItemPath(target, path)) {
        Raise(XNotFound("SHGetPathFromIDList failed"));
    }
    std::u16string longPath;
    if (ops.ReadLongPath(path, longPath) != kError_None) {
        Raise(XNotFound("WinFindShortcutTarget target does not exist"));
    }
    return longPath;
}

SSpecPath WinResolveAlias(const std::u16string& alias) {
    RequireAliasFile(alias);
    const std::u16string target = WinFindShortcutTarget(alias);
    if (WinDoesDirectoryExist(target)) {
        return {ESpecKind::kFolder, WithTrailingSeparator(target)};
    }
    if (WinDoesFileExist(target)) {
        return {ESpecKind::kFile, target};
    }
    RaiseUnresolved("CFileLibImpl::ResolvePossibleAlias target is of unknown type");
}

} // namespace NSFileLibInternals

#include "FileLib/Implementation/Aliases.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/KnownErrors.h"
#include "FileLib/Platform/PlatformCodes.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

[[noreturn]] void RaiseUnresolved(const char* text) {
    RaiseWithTarget(XResolve(text), ReferenceWord());
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

} // namespace NSFileLibInternals

#include "FileLib/Implementation/CFileLibImpl.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>

namespace NSFileLibInternals {

using NSLichen::Raise;
using NSLichen::RaiseWithTarget;
using NSLichen::ReferenceWord;
using NSLichen::XCreate;
using NSLichen::XNotFound;
using NSLichen::XResolve;

namespace {

constexpr const char* kURLStart = "file://";

// The path of a child that may or may not be there; empty for a name that is not valid.
std::u16string FindChildPath(const std::u16string& folder, const std::u16string& name) {
    const std::u16string path = JoinPath(folder, name);
    return IsValidFileName(name) && IsNativePath(path) ? path : std::u16string();
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
        RaiseWithTarget(XResolve("CFileLibImpl::ResolvePossibleAlias alias file is not an alias"),
                        ReferenceWord());
    }
}

} // namespace

SSpecPath CFileLibImpl::InterpretURL(const std::string& url) {
    std::string rest = url.starts_with(kURLStart) ? url.substr(7) : url;
    std::replace(rest.begin(), rest.end(), '/', '\\');
    const std::u16string path = NSTextPackage::Utf8ToUtf16Default(rest);
    if (path.ends_with(u'\\')) {
        if (!IsNativePath(path) || !WinDoesDirectoryExist(path)) {
            Raise(XNotFound("CFileLibImpl::InterpretURL Non valid dir path or dir does not exist"));
        }
        return {ESpecKind::kFolder, path};
    }
    if (!IsNativeFilePath(path) || !WinDoesFileExist(path)) {
        Raise(XNotFound("CFileLibImpl::InterpretURL Non valid file path or dir does not exist"));
    }
    return {ESpecKind::kFile, path};
}

std::string CFileLibImpl::GetURL(const std::u16string& path) {
    return kURLStart + NSTextPackage::Utf16ToUtf8(path);
}

std::u16string CFileLibImpl::MakeVolumePath(const std::u16string& nativePath) {
    if (!WinIsValidVolumePath(nativePath)) {
        Raise(XNotFound("WinIsValidVolumePath failed"));
    }
    return WithTrailingSeparator(nativePath);
}

std::u16string CFileLibImpl::MakeFolderPath(const std::u16string& nativePath) {
    std::u16string path = WithTrailingSeparator(nativePath);
    RequirePath(path);
    if (WinDoesFileExist(WithoutTrailingSeparator(path))) {
        Raise(XNotFound("CFileLibImpl::WinExtensions_CreateDirSpec taret is not a directory"));
    }
    return path;
}

std::u16string CFileLibImpl::MakeFilePath(const std::u16string& nativePath) {
    return RequireFilePath(nativePath);
}

std::u16string CFileLibImpl::MakeChildPath(const std::u16string& folder,
                                           const std::u16string& name) {
    std::u16string path = FindChildPath(folder, name);
    if (path.empty()) {
        Raise(XNotFound("WinIsValidFilePath failed"));
    }
    return path;
}

NSFileLib::SFileInfo CFileLibImpl::GetChildInfo(const std::u16string& folder,
                                                const std::u16string& name, bool& isFolder) {
    const std::u16string path = MakeChildPath(folder, name);
    const NSFileLib::SFileInfo info = WinGetFileInfo(path);
    isFolder = WinDoesDirectoryExist(path);
    return info;
}

bool CFileLibImpl::DoesChildFileExist(const std::u16string& folder, const std::u16string& name) {
    const std::u16string path = FindChildPath(folder, name);
    return !path.empty() && WinDoesFileExist(path);
}

bool CFileLibImpl::DoesChildFolderExist(const std::u16string& folder, const std::u16string& name) {
    const std::u16string path = FindChildPath(folder, name);
    return !path.empty() && WinDoesDirectoryExist(path);
}

std::u16string CFileLibImpl::GetChildFile(const std::u16string& folder,
                                          const std::u16string& name) {
    if (!DoesChildFileExist(folder, name)) {
        Raise(XNotFound("fImpl.GetChildFile child file does not exist"));
    }
    return JoinPath(folder, name);
}

std::u16string CFileLibImpl::GetChildDirectory(const std::u16string& folder,
                                               const std::u16string& name) {
    std::u16string path;
    if (name == u".") {
        path = folder;
    } else if (name == u"..") {
        path = GetParentPath(RequirePath(folder));
    } else {
        path = FindChildPath(folder, name);
    }
    if (path.empty() || !WinDoesDirectoryExist(path)) {
        Raise(XNotFound("fImpl.GetChildDirectory child directory does not exist"));
    }
    return WithTrailingSeparator(path);
}

std::u16string CFileLibImpl::CreateFolder(const std::u16string& folder,
                                          const std::u16string& name) {
    const std::u16string path = FindChildPath(folder, name);
    if (path.empty()) {
        Raise(XCreate("WinIsValidPath failed"));
    }
    WinCreatePhysicalDirectory(path);
    return WithTrailingSeparator(path);
}

void CFileLibImpl::CreateAlias(const std::u16string& alias, const std::u16string& source) {
    if (!IsNativePath(source) || !(WinDoesFileExist(source) || WinDoesDirectoryExist(source))) {
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

SSpecPath CFileLibImpl::ResolvePossibleAlias(const std::u16string& alias) {
    RequireAliasFile(alias);
    const std::u16string target = WinFindShortcutTarget(alias);
    if (WinDoesDirectoryExist(target)) {
        return {ESpecKind::kFolder, WithTrailingSeparator(target)};
    }
    if (WinDoesFileExist(target)) {
        return {ESpecKind::kFile, target};
    }
    RaiseWithTarget(XResolve("CFileLibImpl::ResolvePossibleAlias target is of unknown type"),
                    ReferenceWord());
}

} // namespace NSFileLibInternals

#include "FileLib/Implementation/FileLibImplWin.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>

namespace NSFileLibInternals {

using NSLichen::Raise;
using NSLichen::XCreate;
using NSLichen::XNotFound;

namespace {

constexpr const char* kURLStart = "file://";

const std::u16string& RequirePath(const std::u16string& path) {
    if (!IsNativePath(path)) {
        Raise(XNotFound("WinIsValidPath failed"));
    }
    return path;
}

const std::u16string& RequireFilePath(const std::u16string& path) {
    if (!IsNativeFilePath(path)) {
        Raise(XNotFound("WinIsValidFilePath failed"));
    }
    return path;
}

const std::u16string& RequireFile(const std::u16string& path) {
    if (!WinDoesFileExist(RequireFilePath(path))) {
        Raise(XNotFound("WinDoesFileExist failed"));
    }
    return path;
}

// The path of a child that may or may not be there; empty for a name that is not valid.
std::u16string FindChildPath(const std::u16string& folder, const std::u16string& name) {
    const std::u16string path = JoinPath(folder, name);
    return IsValidFileName(name) && IsNativePath(path) ? path : std::u16string();
}

} // namespace

SSpecPath CFileLibImpl::InterpretURL(const std::string& url) const {
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

std::string CFileLibImpl::GetURL(const std::u16string& path) const {
    return kURLStart + NSTextPackage::Utf16ToUtf8(path);
}

std::u16string CFileLibImpl::MakeVolumePath(const std::u16string& nativePath) const {
    if (!WinIsValidVolumePath(nativePath)) {
        Raise(XNotFound("WinIsValidVolumePath failed"));
    }
    return WithTrailingSeparator(nativePath);
}

std::u16string CFileLibImpl::MakeFolderPath(const std::u16string& nativePath) const {
    std::u16string path = RequirePath(WithTrailingSeparator(nativePath));
    if (WinDoesFileExist(WithoutTrailingSeparator(path))) {
        Raise(XNotFound("CFileLibImpl::WinExtensions_CreateDirSpec taret is not a directory"));
    }
    return path;
}

std::u16string CFileLibImpl::MakeFilePath(const std::u16string& nativePath) const {
    return RequireFilePath(nativePath);
}

std::u16string CFileLibImpl::GetFolderName(const std::u16string& folder) const {
    return GetNameOfPath(folder);
}

std::u16string CFileLibImpl::GetFileName(const std::u16string& file) const {
    return GetNameOfPath(file);
}

std::u16string CFileLibImpl::MakeValidVolumeName(const std::u16string& name) const {
    return NSFileLibInternals::MakeValidVolumeName(name);
}

std::u16string CFileLibImpl::MakeValidFileName(const std::u16string& name) const {
    return NSFileLibInternals::MakeValidFileName(name, kMaxNameLength);
}

std::u16string CFileLibImpl::MakeValidFolderName(const std::u16string& name) const {
    return NSFileLibInternals::MakeValidFolderName(name);
}

void CFileLibImpl::SplitFileName(const std::u16string& name, std::u16string& stem,
                                 std::u16string& extension) const {
    NSFileLibInternals::SplitFileName(name, stem, extension);
}

std::unique_ptr<COpenReadFileImpl> CFileLibImpl::OpenRead(const std::u16string& file) const {
    return std::make_unique<COpenReadFileImpl>(file);
}

std::unique_ptr<COpenReadWriteFileImpl>
CFileLibImpl::OpenReadWrite(const std::u16string& file) const {
    return std::make_unique<COpenReadWriteFileImpl>(file, kOpenMode_CreateAlways);
}

std::unique_ptr<CSafeOpenReadWriteFileImpl>
CFileLibImpl::OpenSafeReadWrite(const std::u16string& file) const {
    return std::make_unique<CSafeOpenReadWriteFileImpl>(file);
}

std::vector<std::u16string> CFileLibImpl::GetVolumes() const {
    return WinGetVolumes();
}

std::u16string CFileLibImpl::GetBootVolume() const {
    return WinGetBootVolume();
}

SDiskSpace CFileLibImpl::GetDiskSpace(const std::u16string& volume) const {
    return WinGetDiskFreeSpace(volume);
}

uint32_t CFileLibImpl::GetVolumeType(const std::u16string& volume) const {
    return WinGetVolumeType(volume);
}

SVolumeInfo CFileLibImpl::GetVolumeInfo(const std::u16string& volume) const {
    return WinGetMountedVolumeInfo(volume);
}

std::u16string CFileLibImpl::GetRootFolder(const std::u16string& volume) const {
    return MakeVolumePath(volume);
}

std::u16string CFileLibImpl::GetVolumeOfFolder(const std::u16string& folder) const {
    return GetVolumeOfPath(RequirePath(folder));
}

SFileInfo CFileLibImpl::GetChildInfo(const std::u16string& folder, const std::u16string& name,
                                     bool& isFolder) const {
    const std::u16string path = MakeChildFilePath(folder, name);
    const SFileInfo info = WinGetFileInfo(path);
    isFolder = WinDoesDirectoryExist(path);
    return info;
}

bool CFileLibImpl::DoesChildFileExist(const std::u16string& folder,
                                      const std::u16string& name) const {
    const std::u16string path = FindChildPath(folder, name);
    return !path.empty() && WinDoesFileExist(path);
}

bool CFileLibImpl::DoesChildFolderExist(const std::u16string& folder,
                                        const std::u16string& name) const {
    const std::u16string path = FindChildPath(folder, name);
    return !path.empty() && WinDoesDirectoryExist(path);
}

std::u16string CFileLibImpl::GetChildFile(const std::u16string& folder,
                                          const std::u16string& name) const {
    if (!DoesChildFileExist(folder, name)) {
        Raise(XNotFound("fImpl.GetChildFile child file does not exist"));
    }
    return JoinPath(folder, name);
}

std::u16string CFileLibImpl::GetChildDirectory(const std::u16string& folder,
                                               const std::u16string& name) const {
    if (name == u".") {
        return WithTrailingSeparator(folder);
    }
    if (name == u"..") {
        return GetParentOfFolder(folder);
    }
    if (!DoesChildFolderExist(folder, name)) {
        Raise(XNotFound("fImpl.GetChildDirectory child directory does not exist"));
    }
    return WithTrailingSeparator(JoinPath(folder, name));
}

std::u16string CFileLibImpl::MakeChildFilePath(const std::u16string& folder,
                                               const std::u16string& name) const {
    std::u16string path = FindChildPath(folder, name);
    if (path.empty()) {
        Raise(XNotFound("WinIsValidFilePath failed"));
    }
    return path;
}

SFileInfo CFileLibImpl::GetFolderInfo(const std::u16string& folder) const {
    return WinGetFileInfo(RequirePath(folder));
}

std::u16string CFileLibImpl::CreateFolder(const std::u16string& folder,
                                          const std::u16string& name) const {
    const std::u16string path = FindChildPath(folder, name);
    if (path.empty()) {
        Raise(XCreate("WinIsValidPath failed"));
    }
    WinCreatePhysicalDirectory(path);
    return WithTrailingSeparator(path);
}

void CFileLibImpl::DeletePhysicalDirectory(const std::u16string& folder) const {
    WinDeletePhysicalDirectory(RequirePath(folder));
}

std::u16string CFileLibImpl::GetParentOfFolder(const std::u16string& folder) const {
    return GetParentPath(RequirePath(folder));
}

std::unique_ptr<CDirScannerImpl>
CFileLibImpl::CreateDirScanner(const std::u16string& folder) const {
    return std::make_unique<CDirScannerImpl>(folder);
}

void CFileLibImpl::SwapFilesContents(const std::u16string& a, const std::u16string& b) const {
    WinSwapFilesContents(RequireFile(a), RequireFile(b));
}

void CFileLibImpl::DeletePhysicalFile(const std::u16string& file) const {
    WinDeletePhysicalFile(RequireFilePath(file));
}

SFileInfo CFileLibImpl::GetFileInfo(const std::u16string& file) const {
    return WinGetFileInfo(RequireFilePath(file));
}

void CFileLibImpl::SetFileInfo(const std::u16string& file, const SFileInfo& info) const {
    WinSetFileInfo(RequireFilePath(file), info);
}

std::u16string CFileLibImpl::GetParentOfFile(const std::u16string& file) const {
    return GetParentPath(RequireFilePath(file));
}

std::u16string CFileLibImpl::CreateUniqueFile(const std::u16string& folder,
                                              const std::u16string& name) const {
    return WinCreateUniqueFile(RequirePath(folder), name);
}

std::u16string CFileLibImpl::CreateUniqueFolder(const std::u16string& folder) const {
    return WinCreateUniqueDirectory(RequirePath(folder));
}

void CFileLibImpl::CreateAlias(const std::u16string& alias, const std::u16string& source) const {
    WinCreateAlias(alias, source);
}

SSpecPath CFileLibImpl::ResolvePossibleAlias(const std::u16string& alias) const {
    return WinResolveAlias(alias);
}

std::u16string CFileLibImpl::GetTemporaryFolder() const {
    return WinGetTempPath();
}

std::u16string CFileLibImpl::GetDesktopFolder() const {
    return WinGetSpecialFolderPath(kSpecialFolder_Desktop);
}

std::u16string CFileLibImpl::GetDocumentsFolder() const {
    return WinGetSpecialFolderPath(kSpecialFolder_Personal);
}

std::u16string CFileLibImpl::GetSpecialFolder(int32_t number) const {
    return WinGetSpecialFolderPath(number);
}

std::u16string CFileLibImpl::GetProductFolder(int32_t number, const std::u16string& maker,
                                              const std::u16string& product) const {
    return WinGetProductFolderPath(number, maker, product);
}

std::u16string CFileLibImpl::GetAppDataFolder(const std::u16string& maker,
                                              const std::u16string& product, bool allUsers) const {
    return WinGetAppDataPathImpl(maker, product, allUsers);
}

std::u16string CFileLibImpl::GetExecutableFile() const {
    return WinGetExecutablePath();
}

} // namespace NSFileLibInternals

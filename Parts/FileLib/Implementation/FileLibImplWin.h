#pragma once

#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/OpenFileImpl.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Rules/SSpecPath.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace NSFileLibInternals {

/// The file library behind its interfaces: operations on paths, failures as exceptions. It has no
/// state; the glue owns one and turns exceptions into status values.
///
/// A "volume" is a root ("C:\"), a "folder" ends in "\", a "file" does not; answers keep to that,
/// and arguments are taken as specs hold them. A "name" is one component. All text is UTF-16, URLs
/// are UTF-8. Unless told otherwise, what is not there is XNotFound.
class CFileLibImpl {
public:
    /// --- URLs: "file://" and the path, with its "\" kept
    /// "file://" may be missing, "/" counts as "\". What ends in "\" is a folder, all else a file;
    /// it must exist.
    SSpecPath InterpretURL(const std::string& url) const;
    std::string GetURL(const std::u16string& path) const;

    /// --- Specs from native paths: tests the form only, so that a spec can name what is not there
    /// (but what is there as a file is no folder). XNotFound for a text that is no path.
    std::u16string MakeVolumePath(const std::u16string& nativePath) const;
    std::u16string MakeFolderPath(const std::u16string& nativePath) const;
    std::u16string MakeFilePath(const std::u16string& nativePath) const;

    /// --- Names
    std::u16string GetFolderName(const std::u16string& folder) const;
    std::u16string GetFileName(const std::u16string& file) const;
    std::u16string MakeValidVolumeName(const std::u16string& name) const;
    std::u16string MakeValidFileName(const std::u16string& name) const;
    std::u16string MakeValidFolderName(const std::u16string& name) const;
    void SplitFileName(const std::u16string& name, std::u16string& stem,
                       std::u16string& extension) const;

    /// --- Opening
    std::unique_ptr<COpenReadFileImpl> OpenRead(const std::u16string& file) const;
    /// Creates: an existing file is emptied.
    std::unique_ptr<COpenReadWriteFileImpl> OpenReadWrite(const std::u16string& file) const;
    std::unique_ptr<CSafeOpenReadWriteFileImpl> OpenSafeReadWrite(const std::u16string& file) const;

    /// --- Volumes
    std::vector<std::u16string> GetVolumes() const;
    std::u16string GetBootVolume() const;
    SDiskSpace GetDiskSpace(const std::u16string& volume) const;
    uint32_t GetVolumeType(const std::u16string& volume) const; // one of kDrive_
    SVolumeInfo GetVolumeInfo(const std::u16string& volume) const;
    std::u16string GetRootFolder(const std::u16string& volume) const;
    std::u16string GetVolumeOfFolder(const std::u16string& folder) const;

    /// --- Children
    SFileInfo GetChildInfo(const std::u16string& folder, const std::u16string& name,
                           bool& isFolder) const;
    bool DoesChildFileExist(const std::u16string& folder, const std::u16string& name) const;
    bool DoesChildFolderExist(const std::u16string& folder, const std::u16string& name) const;
    std::u16string GetChildFile(const std::u16string& folder, const std::u16string& name) const;
    /// ".." gives the parent, "." the folder itself.
    std::u16string GetChildDirectory(const std::u16string& folder,
                                     const std::u16string& name) const;
    /// Where a file of that name is or would be. XNotFound for a name that is not valid.
    std::u16string MakeChildFilePath(const std::u16string& folder,
                                     const std::u16string& name) const;

    /// --- Folders
    SFileInfo GetFolderInfo(const std::u16string& folder) const;
    std::u16string CreateFolder(const std::u16string& folder, const std::u16string& name) const;
    void DeletePhysicalDirectory(const std::u16string& folder) const;
    std::u16string GetParentOfFolder(const std::u16string& folder) const;
    std::unique_ptr<CDirScannerImpl> CreateDirScanner(const std::u16string& folder) const;

    /// --- Files
    void SwapFilesContents(const std::u16string& a, const std::u16string& b) const;
    void DeletePhysicalFile(const std::u16string& file) const;
    SFileInfo GetFileInfo(const std::u16string& file) const;
    void SetFileInfo(const std::u16string& file, const SFileInfo& info) const;
    std::u16string GetParentOfFile(const std::u16string& file) const;
    std::u16string CreateUniqueFile(const std::u16string& folder, const std::u16string& name) const;
    std::u16string CreateUniqueFolder(const std::u16string& folder) const;

    /// --- Aliases
    void CreateAlias(const std::u16string& alias, const std::u16string& source) const;
    SSpecPath ResolvePossibleAlias(const std::u16string& alias) const;

    /// --- Well-known places
    std::u16string GetTemporaryFolder() const;
    std::u16string GetDesktopFolder() const;
    std::u16string GetDocumentsFolder() const;
    std::u16string GetSpecialFolder(int32_t number) const;
    std::u16string GetProductFolder(int32_t number, const std::u16string& maker,
                                    const std::u16string& product) const;
    std::u16string GetAppDataFolder(const std::u16string& maker, const std::u16string& product,
                                    bool allUsers) const;
    std::u16string GetExecutableFile() const;
};

} // namespace NSFileLibInternals

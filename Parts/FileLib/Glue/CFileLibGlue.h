#pragma once

#include "FileLib/Interface/IFileLib.h"

#include <cstdint>

namespace NSFileLibInternals {

/// Both interfaces of the file library over the implementation. Every operation has the shape of
/// GlueGuard.h. The sources go by what the operations are about.
class CFileLibGlue final : public NSFileLib::IFileLib, public NSFileLib::IFileLibWinExtensions {
public:
    int32_t IsValid() const override { return 1; }
    int32_t SetDebugger(NSLichen::IDebugger* debugger) override;
    int32_t InterpretURL(const char* url, NSFileLib::IVolumeSpec** volume,
                         NSFileLib::IDirSpec** folder, NSFileLib::IFileSpec** file) override;
    int32_t GetFileURL(const NSFileLib::IFileSpec* file, char* url) override;
    int32_t GetDirURL(const NSFileLib::IDirSpec* folder, char* url) override;
    int32_t GetNativeFileName(const NSFileLib::IFileSpec* file, char16_t* name) override;
    int32_t GetNativeDirName(const NSFileLib::IDirSpec* folder, char16_t* name) override;
    NSFileLib::IOpenReadFile* OpenForRead(const NSFileLib::IFileSpec* file,
                                          int32_t* status) override;
    NSFileLib::IOpenReadWriteFile* OpenForReadWrite(const NSFileLib::IDirSpec* folder,
                                                    const char16_t* name, int32_t* status) override;
    NSFileLib::ISafeOpenReadWriteFile* OpenForSafeSave(const NSFileLib::IDirSpec* folder,
                                                       const char16_t* name,
                                                       int32_t* status) override;
    int32_t MakeValidVolumeName(char16_t* name) override;
    int32_t MakeValidFileName(char16_t* name) override;
    int32_t MakeValidDirName(char16_t* name) override;
    int32_t SplitFileName(const char16_t* name, char16_t* stem, char16_t* extension) override;
    NSFileLib::IVolumes* GetVolumes(int32_t* status) override;
    NSFileLib::IVolumeSpec* GetBootVolume(int32_t* status) override;
    int32_t GetFreeSpace(const NSFileLib::IVolumeSpec* volume, int64_t* freeBytes,
                         int64_t* totalBytes) override;
    int32_t GetVolumeType(const NSFileLib::IVolumeSpec* volume, int32_t* type) override;
    int32_t GetVolumeInfo(const NSFileLib::IVolumeSpec* volume,
                          NSFileLib::SVolumeInfo* info) override;
    NSFileLib::IDirSpec* GetRootDir(const NSFileLib::IVolumeSpec* volume, int32_t* status) override;
    int32_t GetChildInfo(const NSFileLib::IDirSpec* folder, const char16_t* name,
                         NSFileLib::SFileInfo* info, int32_t* isFolder) override;
    int32_t GetDirInfo(const NSFileLib::IDirSpec* folder, NSFileLib::SFileInfo* info) override;
    NSFileLib::IDirSpec* CreateDir(const NSFileLib::IDirSpec* folder, const char16_t* name,
                                   int32_t* status) override;
    int32_t DeletePhysicalDirectory(const NSFileLib::IDirSpec* folder) override;
    int32_t DoesChildFileExist(const NSFileLib::IDirSpec* folder, const char16_t* name,
                               int32_t* exists) override;
    int32_t DoesChildDirExist(const NSFileLib::IDirSpec* folder, const char16_t* name,
                              int32_t* exists) override;
    NSFileLib::IFileSpec* GetChildFile(const NSFileLib::IDirSpec* folder, const char16_t* name,
                                       int32_t* status) override;
    NSFileLib::IDirSpec* GetChildDirectory(const NSFileLib::IDirSpec* folder, const char16_t* name,
                                           int32_t* status) override;
    NSFileLib::IDirSpec* GetParentOfDir(const NSFileLib::IDirSpec* folder,
                                        int32_t* status) override;
    NSFileLib::IDirScanner* CreateDirScanner(const NSFileLib::IDirSpec* folder,
                                             int32_t* status) override;
    int32_t SwapFilesContents(const NSFileLib::IFileSpec* a,
                              const NSFileLib::IFileSpec* b) override;
    int32_t DeletePhysicalFile(const NSFileLib::IFileSpec* file) override;
    int32_t GetFileInfo(const NSFileLib::IFileSpec* file, NSFileLib::SFileInfo* info) override;
    int32_t SetFileInfo(const NSFileLib::IFileSpec* file,
                        const NSFileLib::SFileInfo* info) override;
    NSFileLib::IDirSpec* GetParentOfFile(const NSFileLib::IFileSpec* file,
                                         int32_t* status) override;
    int32_t ResolvePossibleAlias(const NSFileLib::IFileSpec* alias, NSFileLib::IDirSpec** folder,
                                 NSFileLib::IFileSpec** file) override;
    NSFileLib::IDirSpec* GetTemporaryDir(int32_t* status) override;
    NSFileLib::IDirSpec* GetDesktopDir(int32_t* status) override;
    NSFileLib::IDirSpec* GetDocumentsDir(int32_t* status) override;
    NSFileLib::IDirSpec* GetSpecialDir(int32_t number, int32_t* status) override;
    NSFileLib::IDirSpec* GetProductDir(int32_t number, const char16_t* maker,
                                       const char16_t* product, int32_t* status) override;
    NSFileLib::IDirSpec* GetAppDataDir(const char16_t* maker, const char16_t* product,
                                       int32_t allUsers, int32_t* status) override;
    NSFileLib::IFileSpec* GetExecutableFile(int32_t* status) override;
    int32_t UnsupportedOperation() override;
    int32_t UnsupportedQuery() override;
    NSFileLib::IFileLibWinExtensions* GetWinExtensions() override { return this; }
    NSFileLib::IVolumeSpec* GetVolumeOfDir(const NSFileLib::IDirSpec* folder,
                                           int32_t* status) override;
    NSFileLib::IFileSpec* CreateUniqueFile(const NSFileLib::IDirSpec* folder, const char16_t* name,
                                           int32_t* status) override;
    NSFileLib::IDirSpec* CreateUniqueDir(const NSFileLib::IDirSpec* folder,
                                         int32_t* status) override;

    NSFileLib::IVolumeSpec* CreateVolumeSpec(const char16_t* nativePath, int32_t* status) override;
    int32_t GetVolumePath(const NSFileLib::IVolumeSpec* volume, char16_t* nativePath) override;
    NSFileLib::IDirSpec* CreateDirSpec(const char16_t* nativePath, int32_t* status) override;
    int32_t GetDirPath(const NSFileLib::IDirSpec* folder, char16_t* nativePath) override;
    NSFileLib::IFileSpec* CreateFileSpec(const char16_t* nativePath, int32_t* status) override;
    int32_t GetFilePath(const NSFileLib::IFileSpec* file, char16_t* nativePath) override;
    int32_t CreateAlias(const NSFileLib::IDirSpec* folder, const char16_t* name,
                        const NSFileLib::IFileSpec* source) override;
};

} // namespace NSFileLibInternals

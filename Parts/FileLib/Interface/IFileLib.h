#pragma once

#include "FileLib/Interface/FileLibRecords.h"
#include "FileLib/Interface/FileLibStatus.h"
#include "FileLib/Interface/IDirScanner.h"
#include "FileLib/Interface/IFileLibWinExtensions.h"
#include "FileLib/Interface/IOpenFiles.h"
#include "FileLib/Interface/ISpecs.h"
#include "FileLib/Interface/IVolumes.h"

#include <cstdint>

namespace NSLichen {
class IDebugger;
}

namespace NSFileLib {

/// Volumes, folders and files in the manner of a plugin: plain arguments, no exception, a status
/// for each failure. An operation that creates an object returns it, with the status in its last
/// argument; the caller deletes it. All others return the status.
///
/// Every pointer is required: a null one is kFileLibStatus_BadArgument. Out-arguments hold 666 or
/// "666" until the operation is done. Texts out are buffers of kFileLibTextUnits; a name is one
/// component of a path. What is not there is kFileLibStatus_NotFound.
class IFileLib {
public:
    virtual ~IFileLib() = default;
    /// 1.
    virtual int32_t IsValid() const = 0;
    /// Always kFileLibStatus_LogicError: the debugger belongs to the module that this one is part
    /// of.
    virtual int32_t SetDebugger(NSLichen::IDebugger* debugger) = 0;

    /// URLs are "file://" and the path in UTF-8 with its "\" kept, with a terminator, in buffers of
    /// kFileLibTextUnits bytes. Interpreting takes "/" for "\" too, and a URL that ends in either
    /// for a folder, the root of a volume among them. So `volume` is always null, and one of the
    /// other results is an object, which the caller deletes. What the URL names must be there.
    virtual int32_t InterpretURL(const char* url, IVolumeSpec** volume, IDirSpec** folder,
                                 IFileSpec** file) = 0;
    virtual int32_t GetFileURL(const IFileSpec* file, char* url) = 0;
    virtual int32_t GetDirURL(const IDirSpec* folder, char* url) = 0;
    virtual int32_t GetNativeFileName(const IFileSpec* file, char16_t* name) = 0;
    virtual int32_t GetNativeDirName(const IDirSpec* folder, char16_t* name) = 0;

    virtual IOpenReadFile* OpenForRead(const IFileSpec* file, int32_t* status) = 0;
    /// Creates the file: one that exists loses its bytes at once.
    virtual IOpenReadWriteFile* OpenForReadWrite(const IDirSpec* folder, const char16_t* name,
                                                 int32_t* status) = 0;
    virtual ISafeOpenReadWriteFile* OpenForSafeSave(const IDirSpec* folder, const char16_t* name,
                                                    int32_t* status) = 0;

    /// In place, in a buffer of kFileLibTextUnits.
    virtual int32_t MakeValidVolumeName(char16_t* name) = 0;
    virtual int32_t MakeValidFileName(char16_t* name) = 0;
    virtual int32_t MakeValidDirName(char16_t* name) = 0;
    /// The extension begins with its "."; the stem may be the name's own buffer.
    virtual int32_t SplitFileName(const char16_t* name, char16_t* stem, char16_t* extension) = 0;

    virtual IVolumes* GetVolumes(int32_t* status) = 0;
    virtual IVolumeSpec* GetBootVolume(int32_t* status) = 0;
    /// In bytes: what the user may still take, and the size of the whole.
    virtual int32_t GetFreeSpace(const IVolumeSpec* volume, int64_t* freeBytes,
                                 int64_t* totalBytes) = 0;
    /// 0 unknown, 2 removable, 3 fixed, 4 remote, 5 CD.
    virtual int32_t GetVolumeType(const IVolumeSpec* volume, int32_t* type) = 0;
    virtual int32_t GetVolumeInfo(const IVolumeSpec* volume, SVolumeInfo* info) = 0;
    virtual IDirSpec* GetRootDir(const IVolumeSpec* volume, int32_t* status) = 0;

    virtual int32_t GetChildInfo(const IDirSpec* folder, const char16_t* name, SFileInfo* info,
                                 int32_t* isFolder) = 0;
    virtual int32_t GetDirInfo(const IDirSpec* folder, SFileInfo* info) = 0;
    virtual IDirSpec* CreateDir(const IDirSpec* folder, const char16_t* name, int32_t* status) = 0;
    /// The folder must be empty.
    virtual int32_t DeletePhysicalDirectory(const IDirSpec* folder) = 0;
    virtual int32_t DoesChildFileExist(const IDirSpec* folder, const char16_t* name,
                                       int32_t* exists) = 0;
    virtual int32_t DoesChildDirExist(const IDirSpec* folder, const char16_t* name,
                                      int32_t* exists) = 0;
    virtual IFileSpec* GetChildFile(const IDirSpec* folder, const char16_t* name,
                                    int32_t* status) = 0;
    /// ".." gives the parent, "." the folder itself.
    virtual IDirSpec* GetChildDirectory(const IDirSpec* folder, const char16_t* name,
                                        int32_t* status) = 0;
    virtual IDirSpec* GetParentOfDir(const IDirSpec* folder, int32_t* status) = 0;
    virtual IDirScanner* CreateDirScanner(const IDirSpec* folder, int32_t* status) = 0;

    virtual int32_t SwapFilesContents(const IFileSpec* a, const IFileSpec* b) = 0;
    virtual int32_t DeletePhysicalFile(const IFileSpec* file) = 0;
    virtual int32_t GetFileInfo(const IFileSpec* file, SFileInfo* info) = 0;
    /// Sets hidden and read-only, and each time that is not 0.
    virtual int32_t SetFileInfo(const IFileSpec* file, const SFileInfo* info) = 0;
    virtual IDirSpec* GetParentOfFile(const IFileSpec* file, int32_t* status) = 0;
    /// One of the results is an object, the other null.
    virtual int32_t ResolvePossibleAlias(const IFileSpec* alias, IDirSpec** folder,
                                         IFileSpec** file) = 0;

    virtual IDirSpec* GetTemporaryDir(int32_t* status) = 0;
    virtual IDirSpec* GetDesktopDir(int32_t* status) = 0;
    virtual IDirSpec* GetDocumentsDir(int32_t* status) = 0;
    /// By the platform's number.
    virtual IDirSpec* GetSpecialDir(int32_t number, int32_t* status) = 0;
    /// The maker's and the product's folder below a special folder, created when missing. An empty
    /// text stands for no folder of its own.
    virtual IDirSpec* GetProductDir(int32_t number, const char16_t* maker, const char16_t* product,
                                    int32_t* status) = 0;
    virtual IDirSpec* GetAppDataDir(const char16_t* maker, const char16_t* product,
                                    int32_t allUsers, int32_t* status) = 0;
    /// Of the running program.
    virtual IFileSpec* GetExecutableFile(int32_t* status) = 0;

    /// Places without support in this library: always kFileLibStatus_LogicError, and always 0.
    virtual int32_t UnsupportedOperation() = 0;
    virtual int32_t UnsupportedQuery() = 0;

    /// The library's own.
    virtual IFileLibWinExtensions* GetWinExtensions() = 0;
    virtual IVolumeSpec* GetVolumeOfDir(const IDirSpec* folder, int32_t* status) = 0;
    /// Creates an empty file with the extension of the name.
    virtual IFileSpec* CreateUniqueFile(const IDirSpec* folder, const char16_t* name,
                                        int32_t* status) = 0;
    virtual IDirSpec* CreateUniqueDir(const IDirSpec* folder, int32_t* status) = 0;
};

} // namespace NSFileLib

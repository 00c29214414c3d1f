#pragma once

#include "FileLib/Interface/ISpecs.h"

#include <cstdint>

namespace NSFileLib {

/// Native paths: drive or share, "\" between the parts, a folder's path with a "\" at its end. The
/// form is the same on every system; one that has no drives shows its root as "C:\". The second
/// interface of the file library's object; goes with it.
class IFileLibWinExtensions {
public:
    /// The text alone is judged: what it names need not be there. Any length that the platform
    /// takes.
    virtual IVolumeSpec* CreateVolumeSpec(const char16_t* nativePath, int32_t* status) = 0;
    virtual int32_t GetVolumePath(const IVolumeSpec* volume, char16_t* nativePath) = 0;
    virtual IDirSpec* CreateDirSpec(const char16_t* nativePath, int32_t* status) = 0;
    virtual int32_t GetDirPath(const IDirSpec* folder, char16_t* nativePath) = 0;
    virtual IFileSpec* CreateFileSpec(const char16_t* nativePath, int32_t* status) = 0;
    virtual int32_t GetFilePath(const IFileSpec* file, char16_t* nativePath) = 0;
    /// Makes an alias of that name in the folder, which leads to the source.
    virtual int32_t CreateAlias(const IDirSpec* folder, const char16_t* name,
                                const IFileSpec* source) = 0;

protected:
    IFileLibWinExtensions() = default;
    IFileLibWinExtensions(const IFileLibWinExtensions&) = default;
    IFileLibWinExtensions& operator=(const IFileLibWinExtensions&) = default;
    /// Nothing is deleted through this interface.
    ~IFileLibWinExtensions() = default;
};

} // namespace NSFileLib

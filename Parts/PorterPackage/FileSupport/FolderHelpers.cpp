#include "PorterPackage/FileSupport/FolderHelpers.h"

namespace NSFileLibSupport {

using namespace NSFileLib;

namespace {

template <class ISpec>
std::u16string NameOf(const ISpec& spec) {
    char16_t name[kFileLibTextUnits] = {};
    ThrowIfFileLibError(spec.GetName(name));
    return name;
}

} // namespace

VolumeHandle MakeVolumeSpec(const std::u16string& nativePath) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetWinExtensions()->CreateVolumeSpec(nativePath.c_str(), status);
    });
}

DirHandle MakeDirSpec(const std::u16string& nativePath) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetWinExtensions()->CreateDirSpec(nativePath.c_str(), status);
    });
}

FileHandle MakeFileSpec(const std::u16string& nativePath) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetWinExtensions()->CreateFileSpec(nativePath.c_str(), status);
    });
}

DirHandle GetParent(const FileHandle& file) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetParentOfFile(file.get(), status);
    });
}

DirHandle GetParent(const DirHandle& folder) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetParentOfDir(folder.get(), status);
    });
}

std::u16string GetName(const IFileSpec& file) {
    return NameOf(file);
}

std::u16string GetName(const IDirSpec& folder) {
    return NameOf(folder);
}

FileHandle GetChildFile(const DirHandle& folder, const std::u16string& name) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetChildFile(folder.get(), name.c_str(), status);
    });
}

DirHandle GetChildFolder(const DirHandle& folder, const std::u16string& name) {
    return CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.GetChildDirectory(folder.get(), name.c_str(), status);
    });
}

bool DoesChildFileExist(const DirHandle& folder, const std::u16string& name) {
    int32_t exists = 0;
    ThrowIfFileLibError(
        GetFileLibSingleton()->DoesChildFileExist(folder.get(), name.c_str(), &exists));
    return exists != 0;
}

} // namespace NSFileLibSupport

#include "PorterPackage/FileSupport/COpenTemporaryFile.h"

#include "PorterPackage/FileSupport/FolderHelpers.h"

namespace NSFileLibSupport {

using namespace NSFileLib;

COpenTemporaryFile::SUniqueFile::SUniqueFile(const std::u16string& wantedName) {
    const DirHandle folder = CallFileLib(
        [](IFileLib& fileLib, int32_t* status) { return fileLib.GetTemporaryDir(status); });
    fFile = CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.CreateUniqueFile(folder.get(), wantedName.c_str(), status);
    });
}

COpenTemporaryFile::SUniqueFile::~SUniqueFile() {
    try {
        GetFileLibSingleton()->DeletePhysicalFile(fFile.get());
    } catch (...) {
        // The library itself could not be made again, so nothing can delete the file.
    }
}

COpenTemporaryFile::COpenTemporaryFile(const std::u16string& wantedName)
    : fUniqueFile(wantedName),
      fOpenFile(GetParent(fUniqueFile.fFile), GetName(*fUniqueFile.fFile), kOpenFile_Plain) {}

COpenTemporaryFile::~COpenTemporaryFile() = default;

void COpenTemporaryFile::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    fOpenFile.ReadBytes(position, count, destination);
}

void COpenTemporaryFile::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    fOpenFile.WriteBytes(position, count, source);
}

int64_t COpenTemporaryFile::GetLength() const {
    return fOpenFile.GetLength();
}

} // namespace NSFileLibSupport

#include "PorterPackage/FileSupport/COpenFile.h"

namespace NSFileLibSupport {

using namespace NSFileLib;

COpenFile::COpenFile(const DirHandle& folder, const std::u16string& name, uint32_t flags) {
    if ((flags & kOpenFile_SafeSave) != 0) {
        fSafeFile = CallFileLib([&](IFileLib& fileLib, int32_t* status) {
            return fileLib.OpenForSafeSave(folder.get(), name.c_str(), status);
        });
        fReader = fSafeFile->GetByteReader();
        fWriter = fSafeFile->GetByteWriter();
    } else {
        fPlainFile = CallFileLib([&](IFileLib& fileLib, int32_t* status) {
            return fileLib.OpenForReadWrite(folder.get(), name.c_str(), status);
        });
        fReader = fPlainFile->GetByteReader();
        fWriter = fPlainFile->GetByteWriter();
    }
}

void COpenFile::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    if (count != 0) { // no bytes may come without a buffer
        ThrowIfFileLibError(fReader->Read(position, count, destination));
    }
}

void COpenFile::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    if (count != 0) {
        ThrowIfFileLibError(fWriter->Write(position, count, source));
    }
}

int64_t COpenFile::GetLength() const {
    int64_t size = 0;
    ThrowIfFileLibError(fWriter->GetSize(&size));
    return size;
}

void COpenFile::Commit() {
    if (fSafeFile != nullptr) {
        ThrowIfFileLibError(fSafeFile->Commit());
    }
}

} // namespace NSFileLibSupport

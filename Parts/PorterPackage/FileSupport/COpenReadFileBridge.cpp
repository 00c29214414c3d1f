#include "PorterPackage/FileSupport/COpenReadFileBridge.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

#include <utility>

namespace NSFileLibSupport {

using namespace NSFileLib;

COpenReadFileBridge::COpenReadFileBridge(std::unique_ptr<IOpenReadFile> file)
    : fFile(std::move(file)) {}

COpenReadFileBridge::COpenReadFileBridge(const FileHandle& file)
    : COpenReadFileBridge(CallFileLib([&](IFileLib& fileLib, int32_t* status) {
          return fileLib.OpenForRead(file.get(), status);
      })) {}

void COpenReadFileBridge::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    if (count != 0) { // no bytes may come without a buffer
        ThrowIfFileLibError(fFile->GetByteReader()->Read(position, count, destination));
    }
}

void COpenReadFileBridge::WriteBytes(int64_t /*position*/, int64_t /*count*/,
                                     const uint8_t* /*source*/) {
    NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
}

int64_t COpenReadFileBridge::GetLength() const {
    int64_t size = 0;
    ThrowIfFileLibError(fFile->GetSize(&size));
    return size;
}

std::unique_ptr<NSPorter::CMedia> OpenRobust(const CRobustFileSpec& spec) {
    return std::make_unique<COpenReadFileBridge>(spec.GetFile());
}

} // namespace NSFileLibSupport

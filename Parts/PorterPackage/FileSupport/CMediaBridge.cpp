#include "PorterPackage/FileSupport/CMediaBridge.h"

#include "FileLib/Glue/FileLibFailures.h"

namespace NSFileLibSupport {

void CMediaBridge::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    if (count != 0) { // no bytes may come without a buffer
        NSFileLib::ThrowIfByteStreamError(fReader->Read(position, count, destination));
    }
}

void CMediaBridge::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    if (count != 0) {
        NSFileLib::ThrowIfByteStreamError(fWriter->Write(position, count, source));
    }
}

int64_t CMediaBridge::GetLength() const {
    int64_t size = 0;
    NSFileLib::ThrowIfByteStreamError(fWriter->GetSize(&size));
    return size;
}

} // namespace NSFileLibSupport

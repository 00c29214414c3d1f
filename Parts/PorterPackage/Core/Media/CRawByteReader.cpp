#include "PorterPackage/Core/Media/CRawByteReader.h"

namespace NSPorter {

int32_t CRawByteReader::Read(int64_t position, int64_t count, uint8_t* buffer) {
    if (count > 0) {
        fMedia->ReadAt(position, count, buffer);
    }
    return NSLichen::kByteStreamStatus_OK;
}

} // namespace NSPorter

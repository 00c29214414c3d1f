// Serves code that reads bytes without knowing of media.
#pragma once

#include "Failure/Raising/IByteReader.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSPorter {

class CRawByteReader : public NSLichen::IByteReader {
public:
    /// Borrows the media.
    explicit CRawByteReader(CMedia* media) : fMedia(media) {}

    /// Always kByteStreamStatus_OK: the media's own failures pass as exceptions. The media's cursor
    /// ends behind the bytes read. A count of 0 or less does nothing.
    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override;

private:
    CMedia* fMedia;
};

} // namespace NSPorter

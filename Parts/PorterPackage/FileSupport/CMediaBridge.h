#pragma once

#include "FileLib/Interface/IByteStreams.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSFileLibSupport {

/// A media over a client's byte reader and writer, both borrowed. A status that is not ours
/// travels through the system as XTunneledError and comes out unchanged.
class CMediaBridge : public NSPorter::CMedia {
public:
    CMediaBridge(NSFileLib::IByteReader* reader, NSFileLib::IByteWriter* writer)
        : fReader(reader), fWriter(writer) {}

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override;

private:
    NSFileLib::IByteReader* fReader;
    NSFileLib::IByteWriter* fWriter;
};

} // namespace NSFileLibSupport

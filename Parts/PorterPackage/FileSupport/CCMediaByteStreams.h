#pragma once

#include "FileLib/Interface/IByteStreams.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSFileLibSupport {

// A media as a byte reader or writer. What the media throws becomes a status; a read past the
// media's end is kFileLibStatus_Read and never reaches it. The media is borrowed; its cursor stays.

class CCMediaByteReader : public NSFileLib::IByteReader {
public:
    explicit CCMediaByteReader(NSPorter::CMedia* media) : fMedia(media) {}

    int32_t Read(int64_t position, int64_t count, uint8_t* buffer) override;

private:
    NSPorter::CMedia* fMedia;
};

class CCMediaByteWriter : public NSFileLib::IByteWriter {
public:
    explicit CCMediaByteWriter(NSPorter::CMedia* media) : fMedia(media) {}

    int32_t Write(int64_t position, int64_t count, const uint8_t* source) override;
    int32_t GetSize(int64_t* size) override;

private:
    NSPorter::CMedia* fMedia;
};

} // namespace NSFileLibSupport

// Finds the chunks directly inside one IFF group that fills a media.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>

namespace NSPorter {

/// Faults raise XFormatViolation with an empty text. A group that claims to reach beyond the media
/// is taken as far as the media goes. The size of a chunk found is what the file says and is held
/// against nothing: ask the media's BytesLeft before taking it.
class CIFFReader {
public:
    /// Borrows the media, which begins with the group's id, the word FORM in AIFF files.
    CIFFReader(CMedia* media, uint32_t groupID);
    virtual ~CIFFReader();

    /// Chunks of odd size are then not followed by a pad byte.
    void SetUnpadded() { fPadded = false; }
    /// Sizes are then taken in the host's byte order; ids stay big-endian.
    void SetNativeSizes() { fNativeSizes = true; }

    /// True leaves the cursor on the chunk's first data byte. An empty chunk that is the very last
    /// thing in the group is not found.
    bool FindChunk(uint32_t id, uint32_t& size);
    /// False if the chunk is absent. Bytes that the media does not hold are a fault; the chunk's
    /// own size plays no part.
    bool ReadChunkAt(uint32_t id, uint8_t* destination, int64_t offset, int64_t count);
    /// The 8 bytes at the cursor.
    void ReadChunkHeader(uint32_t& id, uint32_t& size);

    CMedia* GetMedia() const { return fMedia; }

private:
    uint32_t ReadSize();

    bool fPadded = true;
    bool fNativeSizes = false;
    uint32_t fGroupID;
    CMedia* fMedia;
};

} // namespace NSPorter

// Writes one IFF group and the chunks directly inside it, at the media's cursor.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>

namespace NSPorter {

/// One group and one chunk may be open at a time: beginning a second one, or ending one that is not
/// open, raises XIllegalCallSequence. A size beyond 32 bits, or a cursor moved to before the
/// header's end, raises XStdLengthError when it is to be written.
class CIFFWriter {
public:
    /// Borrows the media.
    explicit CIFFWriter(CMedia* media);
    virtual ~CIFFWriter();

    /// Chunks of odd size are then not followed by a pad byte.
    void SetUnpadded() { fPadded = false; }
    /// Sizes are then written in the host's byte order; ids stay big-endian.
    void SetNativeSizes() { fNativeSizes = true; }

    void BeginGroup(uint32_t groupID, uint32_t type);
    void EndGroup();
    void BeginChunk(uint32_t id);
    void EndChunk();
    /// A whole chunk.
    void WriteChunk(uint32_t id, const uint8_t* data, int64_t count);
    /// Raw bytes at the cursor.
    void Write(int64_t count, const uint8_t* data);

    CMedia* GetMedia() const { return fMedia; }

private:
    void WriteSize(uint32_t size);
    void PatchSize(int64_t start);

    bool fPadded = true;
    bool fNativeSizes = false;
    /// Offsets of what is open; otherwise the value that stands in for the sizes not known yet.
    int64_t fGroupStart;
    int64_t fChunkStart;
    CMedia* fMedia;
};

} // namespace NSPorter

#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "SLCE": one cut point of the slice list.
class CLOP2SliceChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2SliceChunk(NSPorter::CMedia& media);

    /// First frame of the slice.
    uint32_t GetPosition() const { return fPosition; }
    /// As stored. Nothing uses it: lengths follow from the slices that turn out active.
    uint32_t GetLength() const { return fLength; }
    /// 0 to 32767.
    int16_t GetLevel() const { return fLevel; }
    /// Hidden and forced exclude each other.
    bool IsHidden() const { return fHidden; }
    bool IsForced() const { return fForced; }
    bool IsMuted() const { return fMuted; }

private:
    uint32_t fPosition;
    uint32_t fLength;
    int16_t fLevel;
    bool fHidden;
    bool fForced;
    bool fMuted;
};

} // namespace NSLOPDLL

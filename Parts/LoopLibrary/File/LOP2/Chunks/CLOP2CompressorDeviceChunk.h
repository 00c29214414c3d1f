#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "COMP": settings of the compressor. The scale of the times depends on the file's version.
class CLOP2CompressorDeviceChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2CompressorDeviceChunk(NSPorter::CMedia& media);

    bool IsEnabled() const { return fEnabled; }
    /// 0 to 127 each.
    uint16_t GetThreshold() const { return fThreshold; }
    uint16_t GetRatio() const { return fRatio; }
    /// 0 to 1023 each.
    uint16_t GetAttack() const { return fAttack; }
    uint16_t GetRelease() const { return fRelease; }

private:
    bool fEnabled;
    uint16_t fThreshold;
    uint16_t fRatio;
    uint16_t fAttack;
    uint16_t fRelease;
};

} // namespace NSLOPDLL

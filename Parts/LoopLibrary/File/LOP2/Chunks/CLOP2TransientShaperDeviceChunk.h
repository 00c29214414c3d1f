#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "TRSH": settings of the transient shaper. The scale of the times depends on the file's version.
class CLOP2TransientShaperDeviceChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2TransientShaperDeviceChunk(NSPorter::CMedia& media);

    bool IsEnabled() const { return fEnabled; }
    /// 0 to 1023 each.
    uint16_t GetAttack() const { return fAttack; }
    uint16_t GetDecay() const { return fDecay; }
    /// Percent, 0 to 100.
    uint16_t GetAmount() const { return fAmount; }

private:
    bool fEnabled;
    uint16_t fAttack;
    uint16_t fDecay;
    uint16_t fAmount;
};

} // namespace NSLOPDLL

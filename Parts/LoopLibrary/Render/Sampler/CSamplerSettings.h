#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// What a loop file says of a sampler's sound. Times are indices into the envelope tables. The
/// ranges are those that loaders clip to; a time outside its table acts as the table's nearest end.
struct CSamplerSettings {
    int16_t fTranspose = 0; // cents, -2400 to 2400, slice voices only
    float fGain = 1000.0F;  // thousandths, 0 to 7943
    bool fShaperOn = true;
    int16_t fShaperAttack = 21;  // 0 to 520; 0 is none
    int16_t fShaperDecay = 1023; // 58 to 749, or 1023 for none
    int16_t fShaperStretch = 40; // percent, 0 to 100: how long a voice stays in its tail
    bool fCompressorOn = false;
    int16_t fCompressorThreshold = 77; // 0 to 127
    int16_t fCompressorRatio = 39;     // 0 to 127
    int16_t fCompressorAttack = 193;   // 0 to 520; 0 is none
    int16_t fCompressorRelease = 350;  // 134 to 666
};

} // namespace NSLOPDLL

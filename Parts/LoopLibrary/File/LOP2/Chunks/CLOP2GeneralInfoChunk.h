#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "GLOB": length, tempo and time signature of the loop, and the settings that concern all slices.
class CLOP2GeneralInfoChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2GeneralInfoChunk(NSPorter::CMedia& media);

    /// What the slice list must hold. Any value passes here.
    uint32_t GetSliceCount() const { return fSliceCount; }
    /// 0 to 999 bars and 0 to 7 beats, not both 0.
    uint16_t GetBars() const { return fBars; }
    uint8_t GetBeats() const { return fBeats; }
    /// 0 to 15 each: 0 passes here.
    uint8_t GetTimeSignatureNumerator() const { return fTimeSignatureNumerator; }
    uint8_t GetTimeSignatureDenominator() const { return fTimeSignatureDenominator; }
    /// 0 to 99.
    uint8_t GetSensitivity() const { return fSensitivity; }
    /// 0 to 999, where 0 is off.
    uint16_t GetGateLevel() const { return fGateLevel; }
    /// Thousandths of unity, 0 to 7943.
    uint16_t GetGain() const { return fGain; }
    /// Cents, -2400 to 2400.
    int16_t GetTranspose() const { return fTranspose; }
    /// Thousandths of a beat per minute, 20000 to 450000.
    uint32_t GetTempo() const { return fTempo; }
    bool IsSplitIntoSlices() const { return fSplitIntoSlices; }
    bool IsDropMuted() const { return fDropMuted; }

private:
    bool IsValid() const;

    uint32_t fSliceCount;
    uint16_t fBars;
    uint8_t fBeats;
    uint8_t fTimeSignatureNumerator;
    uint8_t fTimeSignatureDenominator;
    uint8_t fSensitivity;
    uint16_t fGateLevel;
    uint16_t fGain;
    int16_t fTranspose;
    uint32_t fTempo;
    bool fSplitIntoSlices;
    bool fDropMuted;
};

} // namespace NSLOPDLL

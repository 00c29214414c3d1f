#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "EQ  ": settings of the equalizer, within their ranges. Frequencies in Hz, gains in thousandths
/// of a decibel, widths in thousandths.
class CLOP2EqualizerDeviceChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2EqualizerDeviceChunk(NSPorter::CMedia& media);

    bool IsEnabled() const { return fEnabled; }
    uint16_t GetLowFrequency() const { return fLowFrequency; }
    uint16_t GetBand1Frequency() const { return fBand1Frequency; }
    int16_t GetBand1Gain() const { return fBand1Gain; }
    uint16_t GetBand1Q() const { return fBand1Q; }
    uint16_t GetBand2Frequency() const { return fBand2Frequency; }
    int16_t GetBand2Gain() const { return fBand2Gain; }
    uint16_t GetBand2Q() const { return fBand2Q; }
    uint16_t GetHighFrequency() const { return fHighFrequency; }

private:
    bool IsValid() const;

    bool fEnabled;
    uint16_t fLowFrequency;
    uint16_t fBand1Frequency;
    int16_t fBand1Gain;
    uint16_t fBand1Q;
    uint16_t fBand2Frequency;
    int16_t fBand2Gain;
    uint16_t fBand2Q;
    uint16_t fHighFrequency;
};

} // namespace NSLOPDLL

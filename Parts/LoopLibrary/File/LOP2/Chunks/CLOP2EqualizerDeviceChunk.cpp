#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2EqualizerDeviceChunk::CLOP2EqualizerDeviceChunk(NSPorter::CMedia& media)
    : fEnabled(NSPorter::FlagFromByte(media.ReadU8())), fLowFrequency(media.ReadU16()),
      fBand1Frequency(media.ReadU16()), fBand1Gain(static_cast<int16_t>(media.ReadU16())),
      fBand1Q(media.ReadU16()), fBand2Frequency(media.ReadU16()),
      fBand2Gain(static_cast<int16_t>(media.ReadU16())), fBand2Q(media.ReadU16()),
      fHighFrequency(media.ReadU16()) {
    if (!IsValid()) {
        RaiseFormatViolation("invalid data in equalizer chunk");
    }
}

bool CLOP2EqualizerDeviceChunk::IsValid() const {
    return kLowCutRange.Holds(fLowFrequency) && kBand1FrequencyRange.Holds(fBand1Frequency) &&
           kBandGainRange.Holds(fBand1Gain) && kBandQRange.Holds(fBand1Q) &&
           kBand2FrequencyRange.Holds(fBand2Frequency) && kBandGainRange.Holds(fBand2Gain) &&
           kBandQRange.Holds(fBand2Q) && kHighCutRange.Holds(fHighFrequency);
}

} // namespace NSLOPDLL

#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

namespace {

bool IsWithin(int32_t value, int32_t least, int32_t greatest) {
    return value >= least && value <= greatest;
}

} // namespace

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
    return IsWithin(fLowFrequency, 15, 12000) && IsWithin(fBand1Frequency, 20, 3000) &&
           IsWithin(fBand1Gain, -18000, 18000) && IsWithin(fBand1Q, 500, 10000) &&
           IsWithin(fBand2Frequency, 1500, 16000) && IsWithin(fBand2Gain, -18000, 18000) &&
           IsWithin(fBand2Q, 500, 10000) && IsWithin(fHighFrequency, 100, 20000);
}

} // namespace NSLOPDLL

#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2GeneralInfoChunk::CLOP2GeneralInfoChunk(NSPorter::CMedia& media)
    : fSliceCount(media.ReadU32()), fBars(media.ReadU16()),
      fBeats(static_cast<uint8_t>(media.ReadU8())),
      fTimeSignatureNumerator(static_cast<uint8_t>(media.ReadU8())),
      fTimeSignatureDenominator(static_cast<uint8_t>(media.ReadU8())),
      fSensitivity(static_cast<uint8_t>(media.ReadU8())), fGateLevel(media.ReadU16()),
      fGain(media.ReadU16()), fTranspose(static_cast<int16_t>(media.ReadU16())),
      fTempo(media.ReadU32()), fSplitIntoSlices(NSPorter::FlagFromByte(media.ReadU8())),
      fDropMuted(NSPorter::FlagFromByte(media.ReadU8())) {
    if (!IsValid()) {
        RaiseFormatViolation("invalid data in general info chunk");
    }
}

bool CLOP2GeneralInfoChunk::IsValid() const {
    return kBarsRange.Holds(fBars) && kBeatsRange.Holds(fBeats) && (fBars != 0 || fBeats != 0) &&
           fTimeSignatureNumerator <= kSignaturePartRange.fGreatest &&
           fTimeSignatureDenominator <= kSignaturePartRange.fGreatest &&
           kSensitivityRange.Holds(fSensitivity) && kGateLevelRange.Holds(fGateLevel) &&
           kTempoRange.Holds(fTempo) && kGainRange.Holds(fGain) &&
           kTransposeRange.Holds(fTranspose);
}

} // namespace NSLOPDLL

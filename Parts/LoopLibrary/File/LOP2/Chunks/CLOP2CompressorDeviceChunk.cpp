#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2CompressorDeviceChunk::CLOP2CompressorDeviceChunk(NSPorter::CMedia& media)
    : fEnabled(NSPorter::FlagFromByte(media.ReadU8())), fThreshold(media.ReadU16()),
      fRatio(media.ReadU16()), fAttack(media.ReadU16()), fRelease(media.ReadU16()) {
    if (!kCompressorLevelRange.Holds(fThreshold) || !kCompressorLevelRange.Holds(fRatio) ||
        !kEnvelopeIndexRange.Holds(fAttack) || !kEnvelopeIndexRange.Holds(fRelease)) {
        RaiseFormatViolation("invalid data in compressor chunk");
    }
}

} // namespace NSLOPDLL

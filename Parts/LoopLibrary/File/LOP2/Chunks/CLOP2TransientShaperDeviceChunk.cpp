#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2TransientShaperDeviceChunk::CLOP2TransientShaperDeviceChunk(NSPorter::CMedia& media)
    : fEnabled(NSPorter::FlagFromByte(media.ReadU8())), fAttack(media.ReadU16()),
      fDecay(media.ReadU16()), fAmount(media.ReadU16()) {
    if (!kEnvelopeIndexRange.Holds(fAttack) || !kEnvelopeIndexRange.Holds(fDecay) ||
        !kStretchRange.Holds(fAmount)) {
        RaiseFormatViolation("invalid data in transient shaper chunk");
    }
}

} // namespace NSLOPDLL

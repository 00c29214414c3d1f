#include "LoopLibrary/File/LOP2/Chunks/CLOP2SliceChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

CLOP2SliceChunk::CLOP2SliceChunk(NSPorter::CMedia& media)
    : fPosition(media.ReadU32()), fLength(media.ReadU32()),
      fLevel(static_cast<int16_t>(media.ReadU16())) {
    const uint32_t flags = media.ReadU8();
    fHidden = (flags & 1) != 0;
    fForced = (flags & 2) != 0;
    fMuted = (flags & 4) != 0;

    if (flags >= 8) {
        RaiseFormatViolation("bad flags in slice chunk");
    }
    if (fLevel < 0 || (fHidden && fForced)) {
        RaiseFormatViolation("invalid data in slice chunk");
    }
}

} // namespace NSLOPDLL

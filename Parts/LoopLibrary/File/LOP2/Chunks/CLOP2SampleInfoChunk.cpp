#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleInfoChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

namespace {

// 0 for a code without a meaning.
uint32_t DepthFromCode(uint32_t code) {
    switch (code) {
    case 1:
        return 8;
    case 3:
        return 16;
    case 5:
        return 24;
    case 7:
        return 32;
    default:
        return 0;
    }
}

} // namespace

CLOP2SampleInfoChunk::CLOP2SampleInfoChunk(NSPorter::CMedia& media)
    : fChannels(static_cast<uint8_t>(media.ReadU8())), fBitDepth(DepthFromCode(media.ReadU8())),
      fSampleRate(media.ReadU32()), fFrames(static_cast<int32_t>(media.ReadU32())),
      fLoopStart(static_cast<int32_t>(media.ReadU32())),
      fLoopEnd(static_cast<int32_t>(media.ReadU32())) {
    if (!IsValid()) {
        RaiseFormatViolation("invalid data in sample info chunk");
    }
}

bool CLOP2SampleInfoChunk::IsValid() const {
    // Everything that plays relies on a loop that starts inside the audio, so at least one frame.
    return (fBitDepth == 16 || fBitDepth == 24) && (fChannels == 1 || fChannels == 2) &&
           kStoredRateRange.Holds(fSampleRate) && fLoopStart >= 0 && fLoopStart <= fLoopEnd &&
           fLoopStart < fFrames && fLoopEnd <= fFrames;
}

} // namespace NSLOPDLL

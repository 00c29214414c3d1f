#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselExtraInfoChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

namespace {

NSPorter::SVersionRecord ReadExtraInfoVersion(NSPorter::CMedia& media) {
    const NSPorter::SVersionRecord version = NSPorter::ReadVersionRecord(media);
    if (version.fMajor != 1) {
        // As written, for newer ones too.
        RaiseVersionTooNew("old extra info chunk");
    }
    return version;
}

} // namespace

CLOP2TesselExtraInfoChunk::CLOP2TesselExtraInfoChunk(NSPorter::CMedia& media)
    : fVersion(ReadExtraInfoVersion(media)), fViewMode(media.ReadU32()),
      fShaperEnabled(NSPorter::FlagFromByte(media.ReadU8())),
      fEqualizerEnabled(NSPorter::FlagFromByte(media.ReadU8())),
      fCompressorEnabled(NSPorter::FlagFromByte(media.ReadU8())), fViewStart(media.ReadU32()),
      fViewEnd(media.ReadU32()), fViewFlag(NSPorter::FlagFromByte(media.ReadU8())) {}

} // namespace NSLOPDLL

#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

namespace {

int32_t GridUnitFromByte(uint32_t byte) {
    switch (byte) {
    case 0:
        return 96;
    case 1:
    case 12:
        return 95;
    case 10:
        return 93;
    case 11:
        return 94;
    default:
        RaiseFormatViolation("invalid grid/unit byte tessel info chunk");
    }
}

} // namespace

CLOP2TesselInfoChunk::CLOP2TesselInfoChunk(NSPorter::CMedia& media)
    : fVersion(NSPorter::ReadVersionRecord(media)),
      fTempoSync(NSPorter::FlagFromByte(media.ReadU8())),
      fGridUnit(GridUnitFromByte(media.ReadU8())),
      fExportedSize(static_cast<int32_t>(media.ReadU32())),
      fExportedSliceCount(static_cast<int32_t>(media.ReadU32())) {
    if (!IsValid()) {
        RaiseFormatViolation("invalid data in tessel info chunk");
    }
}

bool CLOP2TesselInfoChunk::IsValid() const {
    const bool isUnversioned =
        fVersion.fMajor == 0 && fVersion.fMinor == 0 && fVersion.fBugFix == 0;
    return (isUnversioned || NSPorter::IsAtLeast(fVersion, {.fMajor = 2})) && fExportedSize >= 0 &&
           fExportedSliceCount >= 0;
}

} // namespace NSLOPDLL

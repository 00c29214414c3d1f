#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/Bytes/CountedStrings.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

CLOP2HeadChunk::CLOP2HeadChunk(NSPorter::CMedia& media) {
    const uint32_t magic = media.ReadU32();
    fVersion = NSPorter::ReadVersionRecord(media);
    std::array<uint8_t, 16> uuid{};
    media.Read(uuid.size(), uuid.data());
    fHeadText = NSPorter::ReadCountedString(media);

    if (magic != kLOP2HeadMagic) {
        RaiseFormatViolation("bad magic number in header chunk");
    }
    if (std::any_of(uuid.begin(), uuid.end(), [](uint8_t byte) { return byte != 0; })) {
        RaiseFormatViolation("non-zero uuid in header");
    }
    if (!NSPorter::IsInRange(fVersion, {.fMajor = 1}, {.fMajor = 3})) {
        // As written, at both ends of the range.
        RaiseVersionTooNew("old head chunk");
    }
}

} // namespace NSLOPDLL

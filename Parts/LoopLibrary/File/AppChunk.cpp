#include "LoopLibrary/File/AppChunk.h"

#include "LoopLibrary/File/LoopFileFailures.h"
#include "PorterPackage/Core/CIFFReader.h"
#include "PorterPackage/Core/FourCharID.h"

#include <algorithm>

namespace NSLOPDLL {

bool ReadAppChunk(NSPorter::CIFFReader& reader, uint32_t& signature,
                  std::span<uint8_t> destination) {
    uint32_t size = 0;
    if (!reader.FindChunk(NSPorter::FourCharID("APPL"), size)) {
        return false;
    }
    NSPorter::CMedia& media = *reader.GetMedia();
    if (size < 4 || int64_t{size} > media.BytesLeft()) {
        RaiseFormatViolation("");
    }
    signature = media.ReadU32();
    const auto limit = static_cast<int64_t>(destination.size());
    media.Read(std::min(int64_t{size} - 4, limit), destination.data());
    return true;
}

} // namespace NSLOPDLL

#include "LoopLibrary/File/Legacy/AppChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "PorterPackage/Core/IFF/CIFFReader.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"

#include <algorithm>

namespace NSLOPDLL {

bool ReadAppChunk(NSPorter::CIFFReader& reader, uint32_t& signature,
                  std::span<uint8_t> destination) {
    uint32_t size = 0;
    if (!reader.FindChunk(kAppChunkID, size)) {
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

void WriteAppChunk(NSPorter::CIFFWriter& writer, uint32_t signature,
                   std::span<const uint8_t> bytes) {
    writer.BeginChunk(kAppChunkID);
    NSPorter::CMedia& media = *writer.GetMedia();
    media.WriteU32(signature);
    media.Write(static_cast<int64_t>(bytes.size()), bytes.data());
    writer.EndChunk();
}

} // namespace NSLOPDLL

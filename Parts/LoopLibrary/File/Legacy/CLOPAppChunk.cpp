#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/Legacy/AppChunk.h"
#include "LoopLibrary/Render/Sample/CAIFFChunks.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <array>
#include <limits>

namespace NSLOPDLL {

namespace {

constexpr int64_t kRecordsOffset = 1016;
// Ticks of one slice.
constexpr int64_t kLongestSpan = 0x7FFFFFFF;

} // namespace

CLOPAppChunk CLOPAppChunk::Load(std::span<const uint8_t, kByteCount> bytes) {
    NSPorter::CMemoryMedia media(kByteCount, bytes.data());
    CLOPAppChunk chunk;
    chunk.fMagic = media.ReadU32();
    chunk.fMajor = static_cast<uint8_t>(media.ReadU8());
    chunk.fMinor = static_cast<uint8_t>(media.ReadU8());
    chunk.fPPQLength = media.ReadU32();
    const uint16_t sliceCount = media.ReadU16();
    chunk.fTempo = static_cast<int32_t>(media.ReadU32());
    if (sliceCount > kSliceLimit) {
        RaiseFormatViolation("");
    }
    media.SetPosition(kRecordsOffset);
    for (uint16_t i = 0; i < sliceCount; ++i) {
        SLOPSliceRecord record;
        record.fSourceStart = media.ReadU32();
        record.fSourceLength = media.ReadU32();
        record.fPPQPosition = media.ReadU32();
        chunk.fSlices.push_back(record);
    }
    return chunk;
}

size_t CLOPAppChunk::FindRunEnd(size_t first) const {
    size_t end = first + 1;
    while (end < fSlices.size() && fSlices[end].fPPQPosition == fSlices[first].fPPQPosition) {
        ++end;
    }
    return end;
}

double CLOPAppChunk::GetFramesPerTick() const {
    double largest = 0.0;
    // All members of a run ask for the same scale.
    for (size_t first = 0; first < fSlices.size();) {
        const size_t end = FindRunEnd(first);
        const int64_t next = end < fSlices.size() ? fSlices[end].fPPQPosition : fPPQLength;
        const int64_t span =
            std::clamp<int64_t>(next - fSlices[first].fPPQPosition, 1, kLongestSpan);
        largest = std::max(largest, static_cast<double>(fSlices[end - 1].fSourceLength) /
                                        static_cast<double>(span));
        first = end;
    }
    return largest;
}

int64_t CLOPAppChunk::GetTotalFrames() const {
    constexpr int64_t kLimit = int64_t{1} << 62;
    const double total = GetFramesPerTick() * fPPQLength;
    return total < static_cast<double>(kLimit) ? static_cast<int64_t>(total) : kLimit;
}

int32_t CLOPAppChunk::CountDistinctPositions() const {
    const double framesPerTick = GetFramesPerTick();
    int32_t count = 0;
    int32_t previous = -1;
    for (const SLOPSliceRecord& record : fSlices) {
        const int32_t position = FrameOfTick(record.fPPQPosition, framesPerTick);
        count += position != previous ? 1 : 0;
        previous = position;
    }
    return count;
}

int32_t FrameOfTick(uint32_t tick, double framesPerTick) {
    constexpr int32_t kLast = std::numeric_limits<int32_t>::max();
    const double frame = tick * framesPerTick;
    return frame < kLast ? static_cast<int32_t>(frame) : kLast;
}

CLOPAppChunk ReadLOPChunk(NSPorter::CMedia& media) {
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    uint32_t signature = 0;
    std::array<uint8_t, CLOPAppChunk::kByteCount> bytes{};
    if (!ReadAppChunk(reader, signature, bytes)) {
        RaiseFormatViolation("can't read app specific chunk");
    }
    if (signature != CLOPAppChunk::kSignature) {
        RaiseFormatViolation("bad app signature for app-specific chunk");
    }
    CLOPAppChunk chunk = CLOPAppChunk::Load(bytes);
    if (chunk.fMagic != CLOPAppChunk::kMagic) {
        RaiseFormatViolation("bad magic number in app specific chunk");
    }
    if (chunk.fMajor != 1) {
        RaiseFormatViolation("incompatible version in app specific chunk");
    }
    if (chunk.fSlices.empty()) {
        // As written.
        RaiseFormatViolation("zero or negativ slice count in app specific chunk");
    }
    return chunk;
}

} // namespace NSLOPDLL

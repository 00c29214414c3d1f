#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/Legacy/AppChunk.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sample/CAIFFChunks.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace NSLOPDLL {

namespace {

constexpr int64_t kHighBarsOffset = 22;
constexpr int64_t kSliceCountOffset = 158;
constexpr uint32_t kMutedBit = 0x80;

// Thousandths of the slices' own length.
constexpr int32_t kStretchTable[] = {1000, 1050, 1100, 1150, 1200, 1250, 1300,
                                     1400, 1500, 1600, 1700, 1800, 1900, 2000};

uint8_t ReadByte(NSPorter::CMedia& media) {
    return static_cast<uint8_t>(media.ReadU8());
}

bool ReadFlag(NSPorter::CMedia& media) {
    return NSPorter::FlagFromByte(media.ReadU8());
}

STSLSliceRecord ReadRecord(NSPorter::CMedia& media) {
    STSLSliceRecord record;
    const uint32_t kindAndMuted = media.ReadU8();
    record.fKind = static_cast<uint8_t>(kindAndMuted & ~kMutedBit);
    record.fMuted = (kindAndMuted & kMutedBit) != 0;
    record.fPosition = media.ReadU32();
    media.Skip(1);
    record.fLevel = media.ReadU16();
    return record;
}

void WriteRecord(NSPorter::CMedia& media, const STSLSliceRecord& record) {
    media.WriteU8((record.fKind & ~kMutedBit) | (record.fMuted ? kMutedBit : 0));
    media.WriteU32(record.fPosition);
    media.WriteU8(0);
    media.WriteU16(record.fLevel);
}

} // namespace

CTSLAppChunk CTSLAppChunk::Load(std::span<const uint8_t, kByteCount> bytes) {
    NSPorter::CMemoryMedia media(kByteCount, bytes.data());
    CTSLAppChunk chunk;
    chunk.fMagic = media.ReadU32();
    chunk.fMajor = ReadByte(media);
    chunk.fMinor = ReadByte(media);
    chunk.fTimeSignatureNumerator = ReadByte(media);
    chunk.fTimeSignatureDenominator = ReadByte(media);
    const uint8_t lowBars = ReadByte(media);
    chunk.fBeats = ReadByte(media);
    chunk.fTempo = static_cast<int32_t>(media.ReadU32());
    chunk.fStoredFlag = ReadFlag(media);
    chunk.fSplitIntoSlices = ReadFlag(media);
    chunk.fDropMuted = ReadFlag(media);
    chunk.fTempoStored = ReadFlag(media);
    chunk.fStretchIndex = media.ReadU16();
    chunk.fSensitivity = media.ReadU16();
    chunk.fBars = static_cast<uint16_t>(ReadByte(media) << 8 | lowBars);
    media.SetPosition(kSliceCountOffset);
    const uint16_t sliceCount = media.ReadU16();
    if (sliceCount > kSliceLimit) {
        RaiseFormatViolation("");
    }
    for (uint16_t i = 0; i < sliceCount; ++i) {
        chunk.fSlices.push_back(ReadRecord(media));
    }
    return chunk;
}

void CTSLAppChunk::Store(std::span<uint8_t, kByteCount> bytes) const {
    std::fill(bytes.begin(), bytes.end(), uint8_t{0});
    NSPorter::CMemoryMedia media(kByteCount, bytes.data());
    media.WriteU32(fMagic);
    media.WriteU8(fMajor);
    media.WriteU8(fMinor);
    media.WriteU8(fTimeSignatureNumerator);
    media.WriteU8(fTimeSignatureDenominator);
    media.WriteU8(fBars & 0xFF);
    media.WriteU8(fBeats);
    media.WriteU32(static_cast<uint32_t>(fTempo));
    media.WriteU8(fStoredFlag ? 1 : 0);
    media.WriteU8(fSplitIntoSlices ? 1 : 0);
    media.WriteU8(fDropMuted ? 1 : 0);
    media.WriteU8(fTempoStored ? 1 : 0);
    media.WriteU16(fStretchIndex);
    media.WriteU16(fSensitivity);
    media.SetPosition(kHighBarsOffset);
    media.WriteU8(static_cast<uint32_t>(fBars) >> 8);
    media.SetPosition(kSliceCountOffset);
    const size_t sliceCount = std::min(fSlices.size(), kSliceLimit);
    media.WriteU16(static_cast<uint16_t>(sliceCount));
    for (size_t i = 0; i < sliceCount; ++i) {
        WriteRecord(media, fSlices[i]);
    }
}

int16_t CTSLAppChunk::GetStretchPercent() const {
    const size_t index = std::min<size_t>(fStretchIndex, std::size(kStretchTable) - 1);
    return kStretchRange.Clip16((kStretchTable[index] - 1000 + 9) / 10);
}

bool CTSLAppChunk::IsOn(const STSLSliceRecord& slice, int32_t threshold) {
    return slice.fKind == kKind_Forced || (slice.fKind == kKind_Level && slice.fLevel > threshold);
}

int32_t CTSLAppChunk::CountExportedSlices(uint32_t loopStart, uint32_t loopEnd) const {
    if (!HasLength()) {
        return 0;
    }
    if (!fSplitIntoSlices) {
        return 1;
    }
    const int32_t threshold = CSliceSequence::ThresholdFor(fSensitivity / 10);
    const auto isDropped = [this](const STSLSliceRecord& slice) {
        return fDropMuted && slice.fMuted;
    };

    auto slice = fSlices.begin();
    int32_t count = 1; // what sounds from the loop start on, until the first slice behind it
    for (; slice != fSlices.end() && slice->fPosition <= loopStart; ++slice) {
        if (IsOn(*slice, threshold) && isDropped(*slice)) {
            count = 0;
        }
    }
    for (; slice != fSlices.end() && slice->fPosition < loopEnd; ++slice) {
        if (IsOn(*slice, threshold) && !isDropped(*slice)) {
            ++count;
        }
    }
    return count;
}

CTSLAppChunk ReadTSLChunk(NSPorter::CMedia& media) {
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    uint32_t signature = 0;
    std::array<uint8_t, CTSLAppChunk::kByteCount> bytes{};
    if (!ReadAppChunk(reader, signature, bytes)) {
        RaiseFormatViolation("couldn't read Tessel chunk");
    }
    if (signature != CTSLAppChunk::kSignature) {
        RaiseFormatViolation("bad Tessel chunk signature");
    }
    CTSLAppChunk chunk = CTSLAppChunk::Load(bytes);
    if (chunk.fMagic != CTSLAppChunk::kMagic) {
        RaiseFormatViolation("bad Tessel chunk magic");
    }
    if (chunk.fMajor != 1) {
        RaiseUnsupportedFormat("bad Tessel chunk version");
    }
    return chunk;
}

} // namespace NSLOPDLL

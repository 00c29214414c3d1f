#include "LoopWriter/TSLFile.h"

#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <algorithm>

namespace NSLoopWriter {

namespace {

constexpr size_t kUsualTSLSize = 8160;
constexpr int64_t kSliceCountOffset = 158;

std::vector<uint8_t> BuildApplicationData(const STSLFile& file) {
    NSPorter::COwnedMemoryMedia media;
    media.WriteU32(file.fMagic);
    media.WriteU8(file.fMajor);
    media.WriteU8(file.fMinor);
    media.WriteU8(file.fTimeSignatureNumerator);
    media.WriteU8(file.fTimeSignatureDenominator);
    media.WriteU8(file.fBars & 0xFFu);
    media.WriteU8(file.fBeats);
    media.WriteU32(file.fTempo);
    media.WriteU8(file.fStoredFlag);
    media.WriteU8(file.fSplitIntoSlices);
    media.WriteU8(file.fDropMuted);
    media.WriteU8(file.fTempoStored);
    media.WriteU16(file.fStretchIndex);
    media.WriteU16(file.fSensitivity);
    media.WriteU8(static_cast<uint32_t>(file.fBars) >> 8);
    media.SetPosition(kSliceCountOffset); // zeros in between
    media.WriteU16(file.fSliceCount.value_or(static_cast<uint16_t>(file.fSlices.size())));
    for (const STSLSlice& slice : file.fSlices) {
        media.WriteU8((slice.fKind & 0x7Fu) | (slice.fMuted ? 0x80u : 0u));
        media.WriteU32(slice.fPosition);
        media.WriteU8(0);
        media.WriteU16(slice.fLevel);
    }
    std::vector<uint8_t> bytes(media.GetData(), media.GetData() + media.GetLength());
    bytes.resize(file.fApplicationSize.value_or(std::max(bytes.size(), kUsualTSLSize)));
    return bytes;
}

} // namespace

SIFFChunk BuildTSLChunks(const STSLFile& file) {
    return BuildAIFFChunks(file.fAudio, file.fSignature, BuildApplicationData(file));
}

std::vector<uint8_t> WriteTSL(const STSLFile& file) {
    return WriteEditedTree(BuildTSLChunks(file), file.fEdit, WriteFlatTree);
}

} // namespace NSLoopWriter

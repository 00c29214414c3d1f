#include "LoopWriter/LOPFile.h"

#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <algorithm>

namespace NSLoopWriter {

namespace {

constexpr size_t kUsualLOPSize = 13016;
constexpr int64_t kSlicesOffset = 1016;

std::vector<uint8_t> BuildApplicationData(const SLOPFile& file) {
    NSPorter::COwnedMemoryMedia media;
    media.WriteU32(file.fMagic);
    media.WriteU8(file.fMajor);
    media.WriteU8(file.fMinor);
    media.WriteU32(file.fPPQLength);
    media.WriteU16(file.fSliceCount.value_or(static_cast<uint16_t>(file.fSlices.size())));
    media.WriteU32(file.fTempo);
    media.SetPosition(kSlicesOffset); // zeros in between
    for (const SLOPSlice& slice : file.fSlices) {
        media.WriteU32(slice.fSourceStart);
        media.WriteU32(slice.fSourceLength);
        media.WriteU32(slice.fPPQPosition);
    }
    std::vector<uint8_t> bytes(media.GetData(), media.GetData() + media.GetLength());
    bytes.resize(file.fApplicationSize.value_or(std::max(bytes.size(), kUsualLOPSize)));
    return bytes;
}

} // namespace

SIFFChunk BuildLOPChunks(const SLOPFile& file) {
    return BuildAIFFChunks(file.fAudio, file.fSignature, BuildApplicationData(file));
}

std::vector<uint8_t> WriteLOP(const SLOPFile& file) {
    return WriteEditedTree(BuildLOPChunks(file), file.fEdit, WriteFlatTree);
}

} // namespace NSLoopWriter

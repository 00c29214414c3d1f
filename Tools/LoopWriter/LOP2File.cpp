#include "LoopWriter/LOP2File.h"

#include "LoopWriter/CTWIPCompressor.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <utility>

namespace NSLoopWriter {

namespace {

using NSPorter::CMedia;
using NSPorter::FourCharID;

void WriteI16(CMedia& media, int16_t value) {
    media.WriteU16(static_cast<uint16_t>(value));
}

void WriteI32(CMedia& media, int32_t value) {
    media.WriteU32(static_cast<uint32_t>(value));
}

void WriteFields(CMedia& media, const SLOP2Head& chunk) {
    media.WriteU32(chunk.fMagic);
    WriteStoredVersion(media, chunk.fVersion);
    media.Write(static_cast<int64_t>(chunk.fUUID.size()), chunk.fUUID.data());
    WriteStoredText(media, chunk.fHeadText);
}

void WriteFields(CMedia& media, const SLOP2CreatorInfo& chunk) {
    for (const SStoredText& text : chunk.fTexts) {
        WriteStoredText(media, text);
    }
}

void WriteFields(CMedia& media, const SLOP2GeneralInfo& chunk) {
    media.WriteU32(chunk.fSliceCount.value());
    media.WriteU16(chunk.fBars);
    media.WriteU8(chunk.fBeats);
    media.WriteU8(chunk.fTimeSignatureNumerator);
    media.WriteU8(chunk.fTimeSignatureDenominator);
    media.WriteU8(chunk.fSensitivity);
    media.WriteU16(chunk.fGateLevel);
    media.WriteU16(chunk.fGain);
    WriteI16(media, chunk.fTranspose);
    media.WriteU32(chunk.fTempo);
    media.WriteU8(chunk.fSplitIntoSlices);
    media.WriteU8(chunk.fDropMuted);
}

void WriteFields(CMedia& media, const SLOP2TesselInfo& chunk) {
    WriteStoredVersion(media, chunk.fVersion);
    media.WriteU8(chunk.fTempoSync);
    media.WriteU8(chunk.fGridByte);
    WriteI32(media, chunk.fExportedSize);
    WriteI32(media, chunk.fExportedSliceCount);
}

void WriteFields(CMedia& media, const SLOP2TesselExtraInfo& chunk) {
    WriteStoredVersion(media, chunk.fVersion);
    media.WriteU32(chunk.fViewMode);
    media.WriteU8(chunk.fShaperEnabled);
    media.WriteU8(chunk.fEqualizerEnabled);
    media.WriteU8(chunk.fCompressorEnabled);
    media.WriteU32(chunk.fViewStart);
    media.WriteU32(chunk.fViewEnd);
    media.WriteU8(chunk.fViewFlag);
}

void WriteFields(CMedia& media, const SLOP2TransientShaper& chunk) {
    media.WriteU8(chunk.fEnabled);
    media.WriteU16(chunk.fAttack);
    media.WriteU16(chunk.fDecay);
    media.WriteU16(chunk.fAmount);
}

void WriteFields(CMedia& media, const SLOP2Equalizer& chunk) {
    media.WriteU8(chunk.fEnabled);
    media.WriteU16(chunk.fLowFrequency);
    media.WriteU16(chunk.fBand1Frequency);
    WriteI16(media, chunk.fBand1Gain);
    media.WriteU16(chunk.fBand1Q);
    media.WriteU16(chunk.fBand2Frequency);
    WriteI16(media, chunk.fBand2Gain);
    media.WriteU16(chunk.fBand2Q);
    media.WriteU16(chunk.fHighFrequency);
}

void WriteFields(CMedia& media, const SLOP2Compressor& chunk) {
    media.WriteU8(chunk.fEnabled);
    media.WriteU16(chunk.fThreshold);
    media.WriteU16(chunk.fRatio);
    media.WriteU16(chunk.fAttack);
    media.WriteU16(chunk.fRelease);
}

void WriteFields(CMedia& media, const SLOP2Slice& chunk) {
    media.WriteU32(chunk.fPosition);
    media.WriteU32(chunk.fLength);
    WriteI16(media, chunk.fLevel);
    media.WriteU8(chunk.fFlags);
}

void WriteFields(CMedia& media, const SLOP2SampleInfo& chunk) {
    media.WriteU8(chunk.fChannels.value());
    media.WriteU8(chunk.fDepthCode.value());
    media.WriteU32(chunk.fSampleRate);
    WriteI32(media, chunk.fFrames.value());
    WriteI32(media, chunk.fLoopStart);
    WriteI32(media, chunk.fLoopEnd.value());
}

template <class Fields>
SIFFChunk Build(uint32_t id, const Fields& fields) {
    NSPorter::COwnedMemoryMedia media;
    WriteFields(media, fields);
    return MakeSimpleChunk(id, {media.GetData(), media.GetData() + media.GetLength()});
}

SLOP2GeneralInfo Complete(SLOP2GeneralInfo info, const SLOP2File& file) {
    info.fSliceCount = info.fSliceCount.value_or(static_cast<uint32_t>(file.fSlices.size()));
    return info;
}

SLOP2SampleInfo Complete(SLOP2SampleInfo info, const SLOP2File& file) {
    const uint8_t channels = file.fRight.empty() ? 1 : 2;
    info.fChannels = info.fChannels.value_or(channels);
    info.fDepthCode = info.fDepthCode.value_or(static_cast<uint8_t>(file.fBitDepth / 4 - 1));
    info.fFrames = info.fFrames.value_or(static_cast<int32_t>(file.fLeft.size()));
    info.fLoopEnd = info.fLoopEnd.value_or(*info.fFrames);
    return info;
}

} // namespace

SIFFChunk BuildLOP2Chunks(const SLOP2File& file) {
    std::vector<SIFFChunk> chunks;
    chunks.push_back(Build(FourCharID("HEAD"), file.fHead));
    if (file.fCreatorInfo) {
        chunks.push_back(Build(FourCharID("CREI"), *file.fCreatorInfo));
    }
    chunks.push_back(Build(FourCharID("GLOB"), Complete(file.fGeneralInfo, file)));
    chunks.push_back(Build(FourCharID("TESL"), file.fTesselInfo));
    if (file.fTesselExtraInfo) {
        chunks.push_back(Build(FourCharID("TSLX"), *file.fTesselExtraInfo));
    }
    chunks.push_back(MakeGroup(SIFFChunk::EKind::kCat, FourCharID("DEVL"),
                               {Build(FourCharID("TRSH"), file.fTransientShaper),
                                Build(FourCharID("EQ  "), file.fEqualizer),
                                Build(FourCharID("COMP"), file.fCompressor)}));
    std::vector<SIFFChunk> slices;
    slices.reserve(file.fSlices.size());
    for (const SLOP2Slice& slice : file.fSlices) {
        slices.push_back(Build(FourCharID("SLCE"), slice));
    }
    chunks.push_back(MakeGroup(SIFFChunk::EKind::kCat, FourCharID("SLCL"), std::move(slices)));
    chunks.push_back(Build(FourCharID("SINF"), Complete(file.fSampleInfo, file)));
    chunks.push_back(MakeSimpleChunk(FourCharID("SDAT"),
                                     file.fRawStream ? *file.fRawStream
                                                     : CompressTWIP(file.fLeft, file.fRight)));
    return MakeGroup(SIFFChunk::EKind::kCat, FourCharID("LOP2"), std::move(chunks));
}

std::vector<uint8_t> WriteLOP2(const SLOP2File& file) {
    return WriteEditedTree(BuildLOP2Chunks(file), file.fEdit, WriteNestedTree);
}

} // namespace NSLoopWriter

#include "LoopLibrary/File/LOP2/LOP2Loader.h"

#include "LoopLibrary/File/Common/CTesselEditSettings.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleDataChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselExtraInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

int32_t GridModeFromUnit(int32_t gridUnit) {
    switch (gridUnit) {
    case 93:
        return 10;
    case 94:
        return 11;
    case 95:
        return 12;
    default:
        return 0;
    }
}

// The 24-bit decoder's word has four bytes, and the ratio counts words.
double CompressionRatio(const CLOP2SampleInfoChunk& audio, int64_t storedBytes) {
    const double wordBytes = audio.GetBitDepth() == 16 ? 2.0 : 4.0;
    return static_cast<double>(int64_t{audio.GetChannels()} * audio.GetFrames()) * wordBytes /
           static_cast<double>(std::max<int64_t>(storedBytes, 1));
}

void TakeExtraInfo(const CLOP2TesselExtraInfoChunk& extra, CTesselEditSettings& settings) {
    const uint32_t viewMode = extra.GetViewMode();
    settings.fViewMode = viewMode >= 1 && viewMode <= 3 ? static_cast<int32_t>(viewMode) : 0;
    settings.fShaperEnabled = extra.IsShaperEnabled() ? 1 : 0;
    settings.fEqualizerEnabled = extra.IsEqualizerEnabled() ? 1 : 0;
    settings.fCompressorEnabled = extra.IsCompressorEnabled() ? 1 : 0;
    settings.fViewStart = extra.GetViewStart();
    settings.fViewEnd = extra.GetViewEnd();
    settings.fViewFlag = extra.GetViewFlag() ? 1 : 0;
}

template <class Chunk>
uint8_t ReadDeviceFlag(NSPorter::CIFFFileReader& reader, uint32_t id) {
    return ReadLOP2Chunk<Chunk>(reader, id).IsEnabled() ? 1 : 0;
}

} // namespace

void ReadLOP2FileInfo(NSPorter::CMedia& media, CTesselFileInfo& info) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    ReadLOP2Chunk<CLOP2HeadChunk>(reader, kLOP2HeadChunkID);

    const auto general = ReadLOP2Chunk<CLOP2GeneralInfoChunk>(reader, kLOP2GeneralInfoChunkID);
    info.fSliceCount = static_cast<int32_t>(general.GetSliceCount());
    info.fTempo = static_cast<int32_t>(general.GetTempo());
    info.fBars = general.GetBars();
    info.fBeats = general.GetBeats();
    info.fTimeSignatureNumerator = general.GetTimeSignatureNumerator();
    info.fTimeSignatureDenominator = general.GetTimeSignatureDenominator();

    const auto tessel = ReadLOP2Chunk<CLOP2TesselInfoChunk>(reader, kLOP2TesselInfoChunkID);
    info.fExportedSize = tessel.GetExportedSize();
    info.fExportedSliceCount = tessel.GetExportedSliceCount();

    const auto audio = ReadLOP2Chunk<CLOP2SampleInfoChunk>(reader, kLOP2SampleInfoChunkID);
    CWaveSampleInfo& sampleInfo = info.fWaveSampleInfo;
    sampleInfo.fChannels = audio.GetChannels();
    sampleInfo.fBitDepth = static_cast<int32_t>(audio.GetBitDepth());
    sampleInfo.fSampleRate = static_cast<int32_t>(audio.GetSampleRate());
    sampleInfo.fFrames = audio.GetFrames();
    sampleInfo.fLoop.fStart = audio.GetLoopStart();
    sampleInfo.fLoop.fEnd = audio.GetLoopEnd();
    sampleInfo.fLoop.fMode = kLoopMode_Looping;
    sampleInfo.fLoop.fDirection = kLoopDirection_Forward;

    reader.EnterChunk(kLOP2SampleDataChunkID);
    info.fCompressionRatio = CompressionRatio(audio, reader.GetDataSize());
    info.fLoopPercent =
        LoopPercent(int64_t{audio.GetLoopEnd()} - audio.GetLoopStart(), audio.GetFrames());
}

std::unique_ptr<CABCWaveSample> ReadLOP2WaveSample(NSPorter::CMedia& media,
                                                   CLOP2DecompressCallback& callback) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    const auto audio = ReadLOP2Chunk<CLOP2SampleInfoChunk>(reader, kLOP2SampleInfoChunkID);
    if (audio.GetBitDepth() != 16 && audio.GetBitDepth() != 24) {
        RaiseUnsupportedFormat("unknown bit depth");
    }

    reader.EnterChunk(kLOP2SampleDataChunkID);
    if (!CLOP2SampleDataChunk::CanHold(reader.GetDataSize(), audio)) {
        CLOP2SampleDataChunk::DecodeUntilFailure(*reader.GetMedia(), audio, callback);
    }
    std::unique_ptr<CABCWaveSample> waveSample =
        CreateWaveSample(audio.GetSampleRate(), static_cast<uint32_t>(audio.GetFrames()),
                         audio.IsStereo(), audio.GetBitDepth());
    waveSample->SetLoop(kSampleLoopMode_Forward, audio.GetLoopStart(), audio.GetLoopEnd());
    const CLOP2SampleDataChunk decoded(*reader.GetMedia(), *waveSample, callback);
    return waveSample;
}

void ReadLOP2EditSettings(NSPorter::CMedia& media, CTesselEditSettings& settings) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    const auto general = ReadLOP2Chunk<CLOP2GeneralInfoChunk>(reader, kLOP2GeneralInfoChunkID);
    settings.fSplitIntoSlices = general.IsSplitIntoSlices() ? 1 : 0;
    const auto tessel = ReadLOP2Chunk<CLOP2TesselInfoChunk>(reader, kLOP2TesselInfoChunkID);
    settings.fGridMode = GridModeFromUnit(tessel.GetGridUnit());

    if (const auto extraMedia = reader.OpenChunk(kLOP2TesselExtraInfoChunkID)) {
        TakeExtraInfo(CLOP2TesselExtraInfoChunk(*extraMedia), settings);
        return;
    }
    reader.EnterCat(kLOP2DeviceCatIFFType);
    settings.fShaperEnabled =
        ReadDeviceFlag<CLOP2TransientShaperDeviceChunk>(reader, kLOP2TransientShaperChunkID);
    settings.fEqualizerEnabled =
        ReadDeviceFlag<CLOP2EqualizerDeviceChunk>(reader, kLOP2EqualizerChunkID);
    settings.fCompressorEnabled =
        ReadDeviceFlag<CLOP2CompressorDeviceChunk>(reader, kLOP2CompressorChunkID);
}

std::unique_ptr<CLOP2CreatorInfoChunk> ReadLOP2CreatorInfo(NSPorter::CMedia& media) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    if (!reader.TryEnterChunk(kLOP2CreatorInfoChunkID)) {
        return nullptr;
    }
    return std::make_unique<CLOP2CreatorInfoChunk>(*reader.GetMedia());
}

} // namespace NSLOPDLL

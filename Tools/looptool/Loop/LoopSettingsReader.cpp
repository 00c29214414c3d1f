#include "looptool/Loop/LoopSettings.h"

#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselExtraInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>

namespace NSLoopTool {

namespace {

using namespace NSLOPDLL;

// The stored byte that stands for a grid.
int64_t GridOfUnit(int32_t unit) {
    switch (unit) {
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

void ReadGeneral(NSPorter::CIFFFileReader& reader, CLoopSettings& settings) {
    const auto head = ReadLOP2Chunk<CLOP2HeadChunk>(reader, kLOP2HeadChunkID);
    settings["format_version"] =
        int64_t{head.GetVersion().fMajor} * 100 + std::min<int64_t>(head.GetVersion().fMinor, 99);
    const auto general = ReadLOP2Chunk<CLOP2GeneralInfoChunk>(reader, kLOP2GeneralInfoChunkID);
    settings["slice_sensitivity"] = general.GetSensitivity();
    settings["gate_level"] = general.GetGateLevel();
    settings["gain"] = general.GetGain();
    settings["transpose"] = general.GetTranspose();
    settings["split_into_slices"] = general.IsSplitIntoSlices() ? 1 : 0;
    settings["drop_muted"] = general.IsDropMuted() ? 1 : 0;
    const auto tessel = ReadLOP2Chunk<CLOP2TesselInfoChunk>(reader, kLOP2TesselInfoChunkID);
    settings["tempo_sync"] = tessel.IsTempoSync() ? 1 : 0;
    settings["grid"] = GridOfUnit(tessel.GetGridUnit());
}

void ReadExtra(const CLOP2TesselExtraInfoChunk& extra, CLoopSettings& settings) {
    settings["editor.view_mode"] = extra.GetViewMode();
    settings["editor.view_start"] = extra.GetViewStart();
    settings["editor.view_end"] = extra.GetViewEnd();
    settings["editor.view_flag"] = extra.GetViewFlag() ? 1 : 0;
    settings["editor.shaper_enabled"] = extra.IsShaperEnabled() ? 1 : 0;
    settings["editor.equalizer_enabled"] = extra.IsEqualizerEnabled() ? 1 : 0;
    settings["editor.compressor_enabled"] = extra.IsCompressorEnabled() ? 1 : 0;
}

void ReadDevices(NSPorter::CIFFFileReader& reader, CLoopSettings& settings) {
    const auto shaper =
        ReadLOP2Chunk<CLOP2TransientShaperDeviceChunk>(reader, kLOP2TransientShaperChunkID);
    settings["shaper.enabled"] = shaper.IsEnabled() ? 1 : 0;
    settings["shaper.attack"] = shaper.GetAttack();
    settings["shaper.decay"] = shaper.GetDecay();
    settings["shaper.amount"] = shaper.GetAmount();
    const auto equalizer = ReadLOP2Chunk<CLOP2EqualizerDeviceChunk>(reader, kLOP2EqualizerChunkID);
    settings["equalizer.enabled"] = equalizer.IsEnabled() ? 1 : 0;
    settings["equalizer.low_cut"] = equalizer.GetLowFrequency();
    settings["equalizer.band1_frequency"] = equalizer.GetBand1Frequency();
    settings["equalizer.band1_gain"] = equalizer.GetBand1Gain();
    settings["equalizer.band1_q"] = equalizer.GetBand1Q();
    settings["equalizer.band2_frequency"] = equalizer.GetBand2Frequency();
    settings["equalizer.band2_gain"] = equalizer.GetBand2Gain();
    settings["equalizer.band2_q"] = equalizer.GetBand2Q();
    settings["equalizer.high_cut"] = equalizer.GetHighFrequency();
    const auto compressor =
        ReadLOP2Chunk<CLOP2CompressorDeviceChunk>(reader, kLOP2CompressorChunkID);
    settings["compressor.enabled"] = compressor.IsEnabled() ? 1 : 0;
    settings["compressor.threshold"] = compressor.GetThreshold();
    settings["compressor.ratio"] = compressor.GetRatio();
    settings["compressor.attack"] = compressor.GetAttack();
    settings["compressor.release"] = compressor.GetRelease();
}

CLoopSettings ReadLOP2(NSPorter::CMedia& media) {
    CLoopSettings settings;
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    ReadGeneral(reader, settings);
    if (const auto extraMedia = reader.OpenChunk(kLOP2TesselExtraInfoChunkID)) {
        ReadExtra(CLOP2TesselExtraInfoChunk(*extraMedia), settings);
    }
    reader.EnterCat(kLOP2DeviceCatIFFType);
    ReadDevices(reader, settings);
    return settings;
}

CLoopSettings ReadTSL(NSPorter::CMedia& media) {
    const CTSLAppChunk chunk = ReadTSLChunk(media);
    return {{"slice_sensitivity_tenths", chunk.fSensitivity},
            {"split_into_slices", chunk.fSplitIntoSlices ? 1 : 0},
            {"drop_muted", chunk.fDropMuted ? 1 : 0},
            {"stretch_index", chunk.fStretchIndex},
            {"stored_flag", chunk.fStoredFlag ? 1 : 0}};
}

} // namespace

CLoopSettings ReadLoopSettings(const std::vector<uint8_t>& bytes) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    const std::string_view kind = KindOfBytes(bytes);
    if (kind == kKind_LOP2) {
        return ReadLOP2(media);
    }
    return kind == kKind_TSL ? ReadTSL(media) : CLoopSettings{};
}

} // namespace NSLoopTool

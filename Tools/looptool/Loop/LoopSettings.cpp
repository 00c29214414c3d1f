#include "looptool/Loop/LoopSettings.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/Common/FileKind.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <array>

namespace NSLoopTool {

namespace {

using namespace NSLOPDLL;
using NSLoopWriter::SLOP2File;
using NSLoopWriter::SLOP2TesselExtraInfo;
using NSLoopWriter::STSLFile;

SLOP2TesselExtraInfo& Extra(SLOP2File& file) {
    if (!file.fTesselExtraInfo) {
        file.fTesselExtraInfo.emplace();
    }
    return *file.fTesselExtraInfo;
}

template <class Field>
void Put(Field& field, int64_t value) {
    field = static_cast<Field>(value);
}

// Setters that do nothing but store.
#define LOP2(field) [](SLOP2File& file, int64_t value) { Put(file.field, value); }
#define EXTRA(field) [](SLOP2File& file, int64_t value) { Put(Extra(file).field, value); }
#define TSL(field) [](STSLFile& file, int64_t value) { Put(file.field, value); }

void SetFormatVersion(SLOP2File& file, int64_t value) {
    file.fHead.fVersion.fMajor = static_cast<uint32_t>(value / 100);
    file.fHead.fVersion.fMinor = static_cast<uint32_t>(value % 100);
}

constexpr SSettingRange kFlag{0, 1};
constexpr SSettingRange kAny32Bits{0, 0xFFFFFFFF};
constexpr const char* kTime = "place in the table of times";

constexpr std::array kRows = {
    SSettingRow{"slice_sensitivity", kSensitivityRange, "99 lets the weakest slices sound",
                LOP2(fGeneralInfo.fSensitivity), nullptr},
    SSettingRow{"slice_sensitivity_tenths",
                {0, 990},
                "990 lets the weakest slices sound",
                nullptr,
                TSL(fSensitivity)},
    SSettingRow{"gate_level", kGateLevelRange, "0 is off", LOP2(fGeneralInfo.fGateLevel), nullptr},
    SSettingRow{"gain", kGainRange, "thousandths of unity", LOP2(fGeneralInfo.fGain), nullptr},
    SSettingRow{"transpose", kTransposeRange, "cents", LOP2(fGeneralInfo.fTranspose), nullptr},
    SSettingRow{"split_into_slices", kFlag, "0: the loop is one piece",
                LOP2(fGeneralInfo.fSplitIntoSlices), TSL(fSplitIntoSlices)},
    SSettingRow{"drop_muted", kFlag, "1: muted slices do not count", LOP2(fGeneralInfo.fDropMuted),
                TSL(fDropMuted)},
    SSettingRow{"tempo_sync", kFlag, "stored only", LOP2(fTesselInfo.fTempoSync), nullptr},
    SSettingRow{
        "grid", {0, 12}, "0, 10, 11 or 12; stored only", LOP2(fTesselInfo.fGridByte), nullptr},
    SSettingRow{"format_version",
                {100, 399},
                "hundredths; below 200 the times of the devices are in another scale",
                SetFormatVersion,
                nullptr},
    SSettingRow{"stretch_index", {0, 13}, "how far slices ring on", nullptr, TSL(fStretchIndex)},
    SSettingRow{"stored_flag", kFlag, "stored only", nullptr, TSL(fStoredFlag)},
    SSettingRow{"shaper.enabled", kFlag, "the transient shaper", LOP2(fTransientShaper.fEnabled),
                nullptr},
    SSettingRow{"shaper.attack", kEnvelopeIndexRange, kTime, LOP2(fTransientShaper.fAttack),
                nullptr},
    SSettingRow{"shaper.decay", kEnvelopeIndexRange, "place in the table of times, 1023 is none",
                LOP2(fTransientShaper.fDecay), nullptr},
    SSettingRow{"shaper.amount", kStretchRange, "percent by which slices ring on",
                LOP2(fTransientShaper.fAmount), nullptr},
    SSettingRow{"equalizer.enabled", kFlag, "the equalizer", LOP2(fEqualizer.fEnabled), nullptr},
    SSettingRow{"equalizer.low_cut", kLowCutRange, "Hz", LOP2(fEqualizer.fLowFrequency), nullptr},
    SSettingRow{"equalizer.band1_frequency", kBand1FrequencyRange, "Hz",
                LOP2(fEqualizer.fBand1Frequency), nullptr},
    SSettingRow{"equalizer.band1_gain", kBandGainRange, "thousandths of a decibel",
                LOP2(fEqualizer.fBand1Gain), nullptr},
    SSettingRow{"equalizer.band1_q", kBandQRange, "thousandths", LOP2(fEqualizer.fBand1Q), nullptr},
    SSettingRow{"equalizer.band2_frequency", kBand2FrequencyRange, "Hz",
                LOP2(fEqualizer.fBand2Frequency), nullptr},
    SSettingRow{"equalizer.band2_gain", kBandGainRange, "thousandths of a decibel",
                LOP2(fEqualizer.fBand2Gain), nullptr},
    SSettingRow{"equalizer.band2_q", kBandQRange, "thousandths", LOP2(fEqualizer.fBand2Q), nullptr},
    SSettingRow{"equalizer.high_cut", kHighCutRange, "Hz", LOP2(fEqualizer.fHighFrequency),
                nullptr},
    SSettingRow{"compressor.enabled", kFlag, "the compressor", LOP2(fCompressor.fEnabled), nullptr},
    SSettingRow{"compressor.threshold", kCompressorLevelRange, "127 is the highest",
                LOP2(fCompressor.fThreshold), nullptr},
    SSettingRow{"compressor.ratio", kCompressorLevelRange, "0 is 1:1", LOP2(fCompressor.fRatio),
                nullptr},
    SSettingRow{"compressor.attack", kEnvelopeIndexRange, kTime, LOP2(fCompressor.fAttack),
                nullptr},
    SSettingRow{"compressor.release", kEnvelopeIndexRange, kTime, LOP2(fCompressor.fRelease),
                nullptr},
    SSettingRow{"editor.view_mode", kAny32Bits, "stored only", EXTRA(fViewMode), nullptr},
    SSettingRow{"editor.view_start", kAny32Bits, "stored only", EXTRA(fViewStart), nullptr},
    SSettingRow{"editor.view_end", kAny32Bits, "stored only", EXTRA(fViewEnd), nullptr},
    SSettingRow{"editor.view_flag", kFlag, "stored only", EXTRA(fViewFlag), nullptr},
    SSettingRow{"editor.shaper_enabled", kFlag, "stored only", EXTRA(fShaperEnabled), nullptr},
    SSettingRow{"editor.equalizer_enabled", kFlag, "stored only", EXTRA(fEqualizerEnabled),
                nullptr},
    SSettingRow{"editor.compressor_enabled", kFlag, "stored only", EXTRA(fCompressorEnabled),
                nullptr},
};

#undef LOP2
#undef EXTRA
#undef TSL

} // namespace

bool SSettingRow::IsOfKind(std::string_view kind) const {
    return (kind == kKind_LOP2 && fSetLOP2 != nullptr) || (kind == kKind_TSL && fSetTSL != nullptr);
}

std::string SSettingRow::GetOption() const {
    std::string option = std::string("--") + fKey;
    std::replace(option.begin(), option.end(), '_', '-');
    std::replace(option.begin(), option.end(), '.', '-');
    return option;
}

std::span<const SSettingRow> SettingRows() {
    return kRows;
}

const SSettingRow* FindSettingRow(std::string_view key) {
    const auto* const found = std::find_if(
        kRows.begin(), kRows.end(), [key](const SSettingRow& row) { return key == row.fKey; });
    return found == kRows.end() ? nullptr : found;
}

std::string_view KindOfBytes(const std::vector<uint8_t>& bytes) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    return KindOfMedia(media);
}

std::string_view KindOfMedia(NSPorter::CMedia& media) {
    switch (NSLOPDLL::CTesselFile::DetectFileKind(media)) {
    case kFileKind_LOP2:
        return kKind_LOP2;
    case kFileKind_TSL:
        return kKind_TSL;
    case kFileKind_LOP:
        return kKind_LOP;
    default:
        return "";
    }
}

} // namespace NSLoopTool

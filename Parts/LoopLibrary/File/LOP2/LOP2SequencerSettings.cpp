#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/File/LOP2/LOP2Loader.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"
#include "LoopLibrary/Render/Slices/LegacyTimeIndex.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"

namespace NSLOPDLL {

namespace {

// How the devices' times are stored.
enum class ETimeScale {
    kOldest,  // 0 to 127, to be converted
    kUnknown, // between the two: the times are ignored and the devices keep their defaults
    kIndices  // indices into the envelope tables
};

ETimeScale TimeScaleOf(const NSPorter::SVersionRecord& version) {
    if (NSPorter::IsSameVersion(version, {.fMajor = 1})) {
        return ETimeScale::kOldest;
    }
    return NSPorter::IsAtLeast(version, {.fMajor = 2}) ? ETimeScale::kIndices
                                                       : ETimeScale::kUnknown;
}

// 0 stands for no attack in both scales.
int32_t OldestAttackIndex(int32_t stored, int32_t divisor, int32_t rate) {
    return stored == 0 ? 0 : LegacyTimeIndex(stored / divisor, false, rate);
}

void ApplyGeneralInfo(const CLOP2GeneralInfoChunk& general, CTesselSequencer& sequencer) {
    sequencer.SetBars(kBarsRange.Clip(general.GetBars()));
    sequencer.SetBeats(kBeatsRange.Clip(general.GetBeats()));
    sequencer.SetTimeSignature(kSignaturePartRange.Clip(general.GetTimeSignatureNumerator()),
                               kSignaturePartRange.Clip(general.GetTimeSignatureDenominator()));
    sequencer.SetTempo(kTempoRange.Clip(static_cast<int32_t>(general.GetTempo())));
    sequencer.SetDropMuted(general.IsDropMuted());
    sequencer.GetSampler().SetGain(kGainRange.Clip16(general.GetGain()));
    sequencer.GetSampler().SetTranspose(kTransposeRange.Clip16(general.GetTranspose()));
}

void ApplyShaper(const CLOP2TransientShaperDeviceChunk& shaper, ETimeScale scale,
                 CTesselSampler& sampler) {
    sampler.SetShaperOn(shaper.IsEnabled());
    sampler.SetShaperStretch(kStretchRange.Clip16(shaper.GetAmount()));
    if (scale == ETimeScale::kUnknown) {
        return;
    }
    int32_t attack = shaper.GetAttack();
    int32_t decay = shaper.GetDecay();
    if (scale == ETimeScale::kOldest) {
        const int32_t rate = sampler.GetOutputRate();
        attack = OldestAttackIndex(attack, 2, rate);
        decay = LegacyTimeIndex(decay, true, rate);
    }
    sampler.SetShaperAttack(kAttackRange.Clip16(attack));
    sampler.SetShaperDecay(decay == kNoDecay ? kNoDecay : kShaperDecayRange.Clip16(decay));
}

void ApplyEqualizer(const CLOP2EqualizerDeviceChunk& chunk, CEqualizerEffect& equalizer) {
    equalizer.SetEnabled(chunk.IsEnabled());
    equalizer.SetLowCut(kLowCutRange.Clip16(chunk.GetLowFrequency()));
    equalizer.SetBand1Frequency(kBand1FrequencyRange.Clip16(chunk.GetBand1Frequency()));
    equalizer.SetBand1Gain(kBandGainRange.Clip16(chunk.GetBand1Gain()));
    equalizer.SetBand1Q(kBandQRange.Clip16(chunk.GetBand1Q()));
    equalizer.SetBand2Frequency(kBand2FrequencyRange.Clip16(chunk.GetBand2Frequency()));
    equalizer.SetBand2Gain(kBandGainRange.Clip16(chunk.GetBand2Gain()));
    equalizer.SetBand2Q(kBandQRange.Clip16(chunk.GetBand2Q()));
    equalizer.SetHighCut(kHighCutRange.Clip16(chunk.GetHighFrequency()));
}

void ApplyCompressor(const CLOP2CompressorDeviceChunk& compressor, ETimeScale scale,
                     CTesselSampler& sampler) {
    sampler.SetCompressorOn(compressor.IsEnabled());
    sampler.SetCompressorThreshold(kCompressorLevelRange.Clip16(compressor.GetThreshold()));
    sampler.SetCompressorRatio(kCompressorLevelRange.Clip16(compressor.GetRatio()));
    if (scale == ETimeScale::kUnknown) {
        return;
    }
    int32_t attack = compressor.GetAttack();
    int32_t release = compressor.GetRelease();
    if (scale == ETimeScale::kOldest) {
        const int32_t rate = sampler.GetOutputRate();
        attack = OldestAttackIndex(attack, 3, rate);
        release = LegacyTimeIndex(release / 2 + 16, true, rate);
    }
    sampler.SetCompressorAttack(kAttackRange.Clip16(attack));
    sampler.SetCompressorRelease(kCompressorReleaseRange.Clip16(release));
}

} // namespace

void ReadLOP2SequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer) {
    NSPorter::CIFFFileReader reader(&media, NSPorter::kIFFMode_BigEndian);
    reader.EnterCat(kLOP2FileCatIFFType);
    const auto head = ReadLOP2Chunk<CLOP2HeadChunk>(reader, kLOP2HeadChunkID);
    const ETimeScale scale = TimeScaleOf(head.GetVersion());
    ApplyGeneralInfo(ReadLOP2Chunk<CLOP2GeneralInfoChunk>(reader, kLOP2GeneralInfoChunkID),
                     sequencer);
    const auto tessel = ReadLOP2Chunk<CLOP2TesselInfoChunk>(reader, kLOP2TesselInfoChunkID);
    sequencer.SetTempoSync(tessel.IsTempoSync());

    reader.EnterCat(kLOP2DeviceCatIFFType);
    ApplyShaper(ReadLOP2Chunk<CLOP2TransientShaperDeviceChunk>(reader, kLOP2TransientShaperChunkID),
                scale, sequencer.GetSampler());
    ApplyEqualizer(ReadLOP2Chunk<CLOP2EqualizerDeviceChunk>(reader, kLOP2EqualizerChunkID),
                   sequencer.GetEqualizer());
    ApplyCompressor(ReadLOP2Chunk<CLOP2CompressorDeviceChunk>(reader, kLOP2CompressorChunkID),
                    scale, sequencer.GetSampler());
}

} // namespace NSLOPDLL

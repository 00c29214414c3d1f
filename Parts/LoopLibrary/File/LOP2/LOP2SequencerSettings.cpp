#include "LoopLibrary/File/Common/LoopLimits.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CompressorDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2EqualizerDeviceChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2GeneralInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2HeadChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TesselInfoChunk.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2TransientShaperDeviceChunk.h"
#include "LoopLibrary/File/LOP2/LOP2Chunks.h"
#include "LoopLibrary/File/LOP2/LOP2Loader.h"
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

int16_t ClampAttack(int32_t index) {
    return ClampTo16(index, 0, 520);
}

// 0 stands for no attack in both scales.
int32_t OldestAttackIndex(int32_t stored, int32_t divisor, int32_t rate) {
    return stored == 0 ? 0 : LegacyTimeIndex(stored / divisor, false, rate);
}

void ApplyGeneralInfo(const CLOP2GeneralInfoChunk& general, CTesselSequencer& sequencer) {
    sequencer.SetBars(ClampBars(general.GetBars()));
    sequencer.SetBeats(ClampBeats(general.GetBeats()));
    sequencer.SetTimeSignature(ClampSignaturePart(general.GetTimeSignatureNumerator()),
                               ClampSignaturePart(general.GetTimeSignatureDenominator()));
    sequencer.SetTempo(ClampTempo(static_cast<int32_t>(general.GetTempo())));
    sequencer.SetDropMuted(general.IsDropMuted());
    sequencer.GetSampler().SetGain(ClampTo16(general.GetGain(), 0, 7943));
    sequencer.GetSampler().SetTranspose(ClampTranspose(general.GetTranspose()));
}

void ApplyShaper(const CLOP2TransientShaperDeviceChunk& shaper, ETimeScale scale,
                 CTesselSampler& sampler) {
    sampler.SetShaperOn(shaper.IsEnabled());
    sampler.SetShaperStretch(ClampTo16(shaper.GetAmount(), 0, 100));
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
    sampler.SetShaperAttack(ClampAttack(attack));
    constexpr int16_t kNoDecay = 1023;
    sampler.SetShaperDecay(decay == kNoDecay ? kNoDecay : ClampTo16(decay, 58, 749));
}

void ApplyEqualizer(const CLOP2EqualizerDeviceChunk& chunk, CEqualizerEffect& equalizer) {
    equalizer.SetEnabled(chunk.IsEnabled());
    equalizer.SetLowCut(ClampTo16(chunk.GetLowFrequency(), 15, 12000));
    equalizer.SetBand1Frequency(ClampTo16(chunk.GetBand1Frequency(), 20, 3000));
    equalizer.SetBand1Gain(ClampTo16(chunk.GetBand1Gain(), -18000, 18000));
    equalizer.SetBand1Q(ClampTo16(chunk.GetBand1Q(), 500, 10000));
    equalizer.SetBand2Frequency(ClampTo16(chunk.GetBand2Frequency(), 1500, 16000));
    equalizer.SetBand2Gain(ClampTo16(chunk.GetBand2Gain(), -18000, 18000));
    equalizer.SetBand2Q(ClampTo16(chunk.GetBand2Q(), 500, 10000));
    equalizer.SetHighCut(ClampTo16(chunk.GetHighFrequency(), 100, 20000));
}

void ApplyCompressor(const CLOP2CompressorDeviceChunk& compressor, ETimeScale scale,
                     CTesselSampler& sampler) {
    sampler.SetCompressorOn(compressor.IsEnabled());
    sampler.SetCompressorThreshold(ClampTo16(compressor.GetThreshold(), 0, 127));
    sampler.SetCompressorRatio(ClampTo16(compressor.GetRatio(), 0, 127));
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
    sampler.SetCompressorAttack(ClampAttack(attack));
    sampler.SetCompressorRelease(ClampTo16(release, 134, 666));
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

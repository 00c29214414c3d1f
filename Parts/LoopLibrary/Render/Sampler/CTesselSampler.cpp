#include "LoopLibrary/Render/Sampler/CTesselSampler.h"

#include "LoopLibrary/Render/Common/FloatMath.h"
#include "LoopLibrary/Render/Forms/RenderForms.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Sampler/VoiceFetch.h"
#include "LoopLibrary/Render/Sampler/VoiceGains.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace NSLOPDLL {

namespace {

static_assert(std::bit_cast<uint32_t>(kVoiceHeadroom) == 0x3f555555);
static_assert(std::bit_cast<uint32_t>(kVoiceSilence) == 0x3883126f);

// The step through the source for a transposition, in 14 bits of fraction. The clip comes ahead of
// the conversion, since crafted rates pass 32 bits.
uint32_t StepFor(int32_t cents, float rateRatio) {
    const int32_t index = std::clamp(cents + kPitchTableUnity, 0, kPitchTableSize - 1);
    const float step = static_cast<float>(CDSPTables::GetPitchTable()[index]) * rateRatio;
    return static_cast<uint32_t>(std::min(step, static_cast<float>(kLargestStep)));
}

// Frames until a voice that decays by `factor` a block falls silent.
float DecayLength(float factor) {
    static const float silence = FloatLog(kVoiceSilence);
    return silence / FloatLog(factor) * 64.0F;
}

} // namespace

CTesselSampler::CTesselSampler(const CABCWaveSample* sample, int32_t outputRate)
    : fSample(sample), fTables(ClipOutputRate(outputRate)) {}

CTesselSampler::CTesselSampler(const CTesselSampler& other)
    : fSample(other.fSample), fSettings(other.fSettings), fTables(other.GetOutputRate()) {}

CTesselSampler::~CTesselSampler() = default;

void CTesselSampler::SetOutputRate(int32_t rate) {
    const int32_t clipped = ClipOutputRate(rate);
    if (clipped != GetOutputRate()) {
        CDSPTablesHandle tables(clipped);
        SwapTables(tables);
    }
}

float CTesselSampler::RateRatio() const noexcept {
    return static_cast<float>(fSample->GetSampleRate()) / static_cast<float>(GetOutputRate());
}

SamplerVoice CTesselSampler::MakeSliceVoice(const CSlicePlayRange& range) const noexcept {
    SamplerVoice voice;
    voice.fKind = kVoiceKind_Slice;
    voice.fPosition = range.fStart;
    voice.fRateRatio = RateRatio();
    StartEnvelopes(voice, range, fSettings);
    voice.fRangeStart = range.fTailStart;
    voice.fRangeEnd = range.fTailEnd;
    voice.fDirection = kVoiceDirection_NotTurned;
    voice.fTailLevel = 1.0F;
    // A tail without length has no way along which the level could change.
    const int64_t tailLength = int64_t{range.fTailEnd} - range.fTailStart;
    if (tailLength > 0) {
        voice.fTailLevelStep = (1.0F - range.fTailGain) / static_cast<float>(tailLength);
    }
    voice.fGain = TargetGain(voice, fSettings);
    return voice;
}

SamplerVoice CTesselSampler::MakePlainVoice(int32_t frame) const noexcept {
    SamplerVoice voice;
    voice.fKind = kVoiceKind_Plain;
    voice.fPosition = frame;
    voice.fRateRatio = RateRatio();
    voice.fState = kVoiceState_Held;
    voice.fEnvelope = 1.0F;
    voice.fGain = kVoiceHeadroom;
    return voice;
}

void CTesselSampler::PickFreeRunRange(SamplerVoice& voice) const noexcept {
    const bool inLoop = voice.fPosition < fSample->GetLoopEnd();
    voice.fRangeStart = inLoop ? fSample->GetLoopStart() : 0;
    voice.fRangeEnd =
        inLoop ? fSample->GetLoopEnd() : static_cast<int32_t>(fSample->GetFrameCount());
}

// A plain rotation: the voice is taken even if it still sounds.
SamplerVoice& CTesselSampler::TakeNextVoice() noexcept {
    fCurrentVoice = static_cast<uint16_t>((fCurrentVoice + 1) % kVoiceCount);
    ReleaseAllVoices();
    return fVoices[fCurrentVoice];
}

void CTesselSampler::StartRange(const CSlicePlayRange& range) noexcept {
    fSample->Prefetch(range.fStart, kBlockFrames + kFetchLookAhead);
    TakeNextVoice() = MakeSliceVoice(range);
}

void CTesselSampler::StartFreeRange(int32_t start, int32_t end) noexcept {
    SamplerVoice& voice = TakeNextVoice();
    voice = MakePlainVoice(start);
    voice.fDirection = kVoiceDirection_Once;
    voice.fRangeStart = start;
    voice.fRangeEnd = end;
}

void CTesselSampler::StartFreeRun(int32_t frame) noexcept {
    SamplerVoice& voice = TakeNextVoice();
    voice = MakePlainVoice(frame);
    voice.fDirection = kVoiceDirection_Loop;
    PickFreeRunRange(voice);
}

void CTesselSampler::ReleaseAllVoices() noexcept {
    for (SamplerVoice& voice : fVoices) {
        if (voice.fState != kVoiceState_Off) {
            voice.fState = kVoiceState_Release;
        }
    }
}

void CTesselSampler::EndFreeLoops() noexcept {
    for (SamplerVoice& voice : fVoices) {
        if (voice.fKind == kVoiceKind_Plain && voice.fDirection == kVoiceDirection_Loop) {
            voice.fDirection = kVoiceDirection_Once;
        }
    }
}

void CTesselSampler::ResetVoices() noexcept {
    fVoices.fill(SamplerVoice{});
}

bool CTesselSampler::IsCurrentVoiceIdle() const noexcept {
    return fVoices[fCurrentVoice].fState == kVoiceState_Off;
}

int32_t CTesselSampler::GetCurrentVoicePosition() const noexcept {
    return fVoices[fCurrentVoice].fPosition;
}

bool CTesselSampler::IsCurrentVoiceInTail() const noexcept {
    return !IsCurrentVoiceIdle() && fVoices[fCurrentVoice].fInTail;
}

uint32_t CTesselSampler::SliceStep(const SamplerVoice& voice) const noexcept {
    return StepFor(fSettings.fTranspose, voice.fRateRatio);
}

int32_t CTesselSampler::GetRenderLength(const CSlicePlayRange& range) const noexcept {
    const SamplerVoice voice = MakeSliceVoice(range);
    const float fadeLength = voice.fFadeGain / voice.fFadeStep;
    const auto sourceLength = static_cast<float>(int64_t{voice.fRangeEnd} - range.fStart);
    const float step = static_cast<float>(SliceStep(voice)) * 0x1p-14F;
    // A step of 0 never gets anywhere: infinite, unless a decay ends the voice.
    float length = (sourceLength + fadeLength) / step;

    if (fSettings.fShaperOn) {
        float alive = 0.0F;
        if (voice.fState == kVoiceState_Attack) {
            alive += 64.0F / EnvelopeTableValue(fTables->GetAttackRates(), fSettings.fShaperAttack);
        }
        if (fSettings.fShaperDecay < kEnvelopeTableSize - 1) {
            alive +=
                DecayLength(EnvelopeTableValue(fTables->GetDecayFactors(), fSettings.fShaperDecay));
            length = std::min(length, alive);
        }
    }
    if (length < 1.0F) {
        return 1;
    }
    return length < 0x1p31F ? static_cast<int32_t>(length) : std::numeric_limits<int32_t>::max();
}

void CTesselSampler::RenderBlock(const CBlockBuffers& buffers) noexcept {
    std::fill_n(buffers.fLeft, kBlockFrames, 0.0F);
    std::fill_n(buffers.fRight, kBlockFrames, 0.0F);
    CVoiceGains gains;
    static_assert(CVoiceGains::kVoices == kVoiceCount);
    for (size_t index = 0; index < kVoiceCount; ++index) {
        SamplerVoice& voice = fVoices[index];
        if (voice.fState == kVoiceState_Off) {
            continue;
        }
        const CGainMove move =
            voice.fKind == kVoiceKind_Slice ? StepSliceVoice(voice) : StepPlainVoice(voice);
        if (voice.fState != kVoiceState_Off) {
            gains.Plan(index, voice.fGain, move);
        }
    }
    gains.Finish();
    for (size_t index = 0; index < kVoiceCount; ++index) {
        if (fVoices[index].fState != kVoiceState_Off) {
            RenderVoice(fVoices[index], gains.Get(index), buffers);
        }
    }
}

CGainMove CTesselSampler::StepSliceVoice(SamplerVoice& voice) const noexcept {
    if (voice.fState != kVoiceState_Attack && voice.fFadeGain * voice.fEnvelope < kVoiceSilence) {
        voice.fState = kVoiceState_Off;
        return {};
    }
    return StepEnvelopes(voice, fSettings, *fTables);
}

CGainMove CTesselSampler::StepPlainVoice(SamplerVoice& voice) const noexcept {
    if (voice.fState == kVoiceState_Release) {
        if (voice.fEnvelope < kVoiceSilence) {
            voice.fState = kVoiceState_Off;
            return {};
        }
        voice.fEnvelope *= fTables->GetDecayFactors()[0];
    }
    CGainMove move;
    move.fTarget = voice.fEnvelope * kVoiceHeadroom;
    move.fRamp = (move.fTarget - voice.fGain) * kFramePart;
    return move;
}

void CTesselSampler::RenderVoice(SamplerVoice& voice, const float* gains,
                                 const CBlockBuffers& buffers) noexcept {
    const bool isSlice = voice.fKind == kVoiceKind_Slice;
    const uint32_t step = isSlice ? SliceStep(voice) : StepFor(0, voice.fRateRatio);
    if (!isSlice && voice.fDirection == kVoiceDirection_Loop) {
        PickFreeRunRange(voice);
    }
    alignas(32) float left[kFetchCapacity];
    alignas(32) float rightOfStereo[kFetchCapacity];
    float* const right = fSample->IsStereo() ? rightOfStereo : left;
    const CInterpolationJob job{left, right, voice.fPhase, step, gains, buffers};
    const int32_t count = AdvancePhase(voice, step);
    if (count > kFetchedAtOnce) {
        RenderInParts(voice, job, left, right);
        return;
    }
    if (isSlice) {
        FetchSliceVoice(voice, *fSample, count, left, right);
    } else {
        FetchPlainVoice(voice, *fSample, count, left, right);
    }
    GetRenderForm().fInterpolate(job);
}

// The look-ahead of every part but the last is the beginning of the next one: real frames, which
// move to the front when the part is done.
void CTesselSampler::RenderInParts(SamplerVoice& voice, const CInterpolationJob& block, float* left,
                                   float* right) noexcept {
    CInterpolationJob part = block;
    part.fFrameCount = kInterpolatedAtOnce;
    FetchFrames(voice, *fSample, kFetchLookAhead, left, right);
    for (int32_t done = 0; done < kBlockFrames; done += kInterpolatedAtOnce) {
        const uint32_t end = part.fPhase + part.fStep * static_cast<uint32_t>(kInterpolatedAtOnce);
        const auto passed = static_cast<int32_t>(end >> 14);
        if (done + kInterpolatedAtOnce < kBlockFrames) {
            FetchFrames(voice, *fSample, passed, left + kFetchLookAhead, right + kFetchLookAhead);
        } else {
            FetchFrames(voice, *fSample, passed - kFetchLookAhead, left + kFetchLookAhead,
                        right + kFetchLookAhead);
            FetchLookAhead(voice, *fSample, left + passed, right + passed);
        }
        part.fGains = block.fGains + done;
        part.fOutput = {block.fOutput.fLeft + done, block.fOutput.fRight + done};
        GetRenderForm().fInterpolate(part);
        std::copy_n(left + passed, kFetchLookAhead, left);
        if (right != left) {
            std::copy_n(right + passed, kFetchLookAhead, right);
        }
        part.fPhase = end & 0x3fff;
    }
}

int32_t CTesselSampler::AdvancePhase(SamplerVoice& voice, uint32_t step) noexcept {
    const uint32_t total = step * static_cast<uint32_t>(kBlockFrames) + voice.fPhase;
    voice.fPhase = total & 0x3fff;
    return static_cast<int32_t>(total >> 14);
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sampler/VoiceEnvelopes.h"

#include "LoopLibrary/Render/Common/CBlockBuffers.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

constexpr int16_t kNoAttack = 0;
constexpr int16_t kNoDecay = kEnvelopeTableSize - 1;

constexpr uint32_t kCompressorState_Attack = 1;
constexpr uint32_t kCompressorState_Release = 2;

// How much a voice's tail fades per fetched frame. The fade lasts for a percentage of the range's
// body, and for what lies behind the tail.
float FadeStep(const CSlicePlayRange& range, const CSamplerSettings& settings) {
    const int64_t percent = settings.fShaperOn ? settings.fShaperStretch + 1 : 1;
    const int64_t body = int64_t{range.fTailEnd} - range.fStart;
    const int64_t length = body * percent / 100 + (int64_t{range.fEnd} - range.fTailEnd);
    return length >= 2 ? 1.0F / static_cast<float>(length) : 1.0F;
}

} // namespace

float EnvelopeTableValue(const float* table, int16_t index) noexcept {
    return table[std::clamp<int32_t>(index, 0, kEnvelopeTableSize - 1)];
}

void StartEnvelopes(SamplerVoice& voice, const CSlicePlayRange& range,
                    const CSamplerSettings& settings) noexcept {
    const bool hasAttack = settings.fShaperOn && settings.fShaperAttack >= 1;
    voice.fState = hasAttack ? kVoiceState_Attack : kVoiceState_Held;
    voice.fEnvelope = hasAttack ? 0.0F : 1.0F;

    const bool hasCompressorAttack = settings.fCompressorAttack >= 1;
    voice.fCompressorState =
        hasCompressorAttack ? kCompressorState_Attack : kCompressorState_Release;
    voice.fCompressorEnvelope = hasCompressorAttack ? 0.0F : 1.0F;

    voice.fFadeGain = 1.0F;
    voice.fFadeStep = FadeStep(range, settings);
}

float TargetGain(const SamplerVoice& voice, const CSamplerSettings& settings) noexcept {
    const float threshold = static_cast<float>(settings.fCompressorThreshold) * 0.00390625F + 0.01F;
    const float ratio = static_cast<float>(settings.fCompressorRatio) / 127.0F;
    const float level = std::max(threshold, voice.fCompressorEnvelope);
    const float divisor =
        settings.fCompressorOn ? level * 2.0F * ratio + (1.0F - ratio) + 0.001F : 1.0F;
    return 1.0F / divisor * voice.fEnvelope * (settings.fGain * 0.001F) * kVoiceHeadroom;
}

CGainMove StepEnvelopes(SamplerVoice& voice, const CSamplerSettings& settings,
                        const CDSPTables& tables) noexcept {
    const float* attackRates = tables.GetAttackRates();
    const float* decayFactors = tables.GetDecayFactors();

    if (voice.fCompressorState == kCompressorState_Attack) {
        voice.fCompressorEnvelope += EnvelopeTableValue(attackRates, settings.fCompressorAttack);
    } else {
        voice.fCompressorEnvelope *= EnvelopeTableValue(decayFactors, settings.fCompressorRelease);
    }
    if (voice.fCompressorEnvelope > 1.0F) {
        voice.fCompressorState = kCompressorState_Release;
        voice.fCompressorEnvelope = 1.0F;
    }

    CGainMove move;
    if (voice.fState == kVoiceState_Attack) {
        const float rate = EnvelopeTableValue(
            attackRates, settings.fShaperOn ? settings.fShaperAttack : kNoAttack);
        voice.fEnvelope += rate;
        move.fAttackRamp = rate * kFramePart;
    } else if (voice.fState == kVoiceState_Held) {
        voice.fEnvelope *=
            EnvelopeTableValue(decayFactors, settings.fShaperOn ? settings.fShaperDecay : kNoDecay);
    } else {
        voice.fEnvelope *= decayFactors[0];
    }
    if (voice.fEnvelope > 1.0F) {
        voice.fState = kVoiceState_Held;
        voice.fEnvelope = 1.0F;
    }

    move.fTarget = TargetGain(voice, settings);
    move.fRamp = (move.fTarget - voice.fGain) * kFramePart;
    if (move.fAttackRamp <= move.fRamp) {
        move.fAttackRamp = 0.0F;
    }
    return move;
}

float FillGains(float gain, CGainMove move, float* gains) noexcept {
    for (int32_t i = 0; i < kBlockFrames; ++i) {
        gains[i] = gain;
        if (move.fAttackRamp > 0.0F && move.fAttackRamp > move.fRamp) {
            gain += move.fAttackRamp;
            if (gain >= move.fTarget) {
                gain = move.fTarget;
                move.fAttackRamp = 0.0F;
                move.fRamp = 0.0F;
            }
        } else {
            gain += move.fRamp;
        }
    }
    return gain;
}

} // namespace NSLOPDLL

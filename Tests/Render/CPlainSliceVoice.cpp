#include "Tests/Render/CPlainSliceVoice.h"

#include "LoopLibrary/Render/CDSPTables.h"

namespace NSLOPDLL {

CPlainSliceVoice::CPlainSliceVoice(const CABCWaveSample& sample, int32_t outputRate,
                                   const CSamplerSettings& settings, const CSlicePlayRange& range)
    : fSample(sample), fSettings(settings),
      fRange(range), fCursor{range.fStart, 0, false, 1.0F, 1.0F} {
    const CDSPTables tables(outputRate);
    fAttackRate = tables.GetAttackRates()[settings.fShaperAttack];
    fDecayFactor = settings.fShaperOn ? tables.GetDecayFactors()[settings.fShaperDecay] : 1.0F;
    fCompressorAttackRate = tables.GetAttackRates()[settings.fCompressorAttack];
    fCompressorFactor = tables.GetDecayFactors()[settings.fCompressorRelease];
    fRatio = static_cast<float>(sample.GetSampleRate()) / static_cast<float>(outputRate);

    const int64_t percent = settings.fShaperOn ? settings.fShaperStretch + 1 : 1;
    const int64_t length =
        (range.fTailEnd - range.fStart) * percent / 100 + (range.fEnd - range.fTailEnd);
    fFadeStep = length >= 2 ? 1.0F / static_cast<float>(length) : 1.0F;
    fLevelStep =
        range.fTailEnd == range.fTailStart
            ? 0.0F
            : (1.0F - range.fTailGain) / static_cast<float>(range.fTailEnd - range.fTailStart);
    fRising = settings.fShaperOn && settings.fShaperAttack > 0;
    fEnvelope = fRising ? 0.0F : 1.0F;
    fCompressorRising = settings.fCompressorAttack > 0;
    fCompressor = fCompressorRising ? 0.0F : 1.0F;
    fGain = Target();
}

float CPlainSliceVoice::Target() const {
    const float threshold = static_cast<float>(fSettings.fCompressorThreshold) / 256.0F + 0.01F;
    const float ratio = static_cast<float>(fSettings.fCompressorRatio) / 127.0F;
    const float level = fCompressor > threshold ? fCompressor : threshold;
    float divisor = 1.0F;
    if (fSettings.fCompressorOn) {
        divisor = level * 2.0F * ratio;
        divisor = divisor + (1.0F - ratio);
        divisor = divisor + 0.001F;
    }
    float gain = 1.0F / divisor;
    gain = gain * fEnvelope;
    gain = gain * (fSettings.fGain * 0.001F);
    return gain * 0.8333333F;
}

void CPlainSliceVoice::Fetch(CCursor& c, size_t k, bool lookAhead) {
    fLeft[k] = fSample.GetFloatSample(c.fPosition, 1) * c.fFade * c.fLevel;
    fRight[k] =
        fSample.IsStereo() ? fSample.GetFloatSample(c.fPosition, 2) * c.fFade * c.fLevel : fLeft[k];
    if (c.fInTail) {
        c.fFade -= fFadeStep;
        c.fFade = c.fFade < 1e-6F ? 1e-6F : c.fFade;
        c.fLevel = c.fDirection == 1 ? c.fLevel + fLevelStep : c.fLevel - fLevelStep;
    }
    if (c.fDirection == 2) {
        --c.fPosition;
        c.fDirection = c.fPosition <= fRange.fTailStart ? 1 : 2;
    } else if (c.fPosition + 1 < fRange.fTailEnd) {
        ++c.fPosition;
    } else {
        c.fInTail = c.fInTail || !lookAhead;
        c.fDirection = c.fPosition > fRange.fTailStart ? 2 : 1;
    }
}

bool CPlainSliceVoice::Render(CTestBlock& block) {
    if (!fRising && fCursor.fFade * fEnvelope < 6.25e-5F) {
        return false;
    }
    const int32_t cents = fSettings.fTranspose + 12900;
    const float exactStep = static_cast<float>(CDSPTables::GetPitchTable()[cents]) * fRatio;
    const uint32_t step = exactStep > 1048576.0F ? 1048576U : static_cast<uint32_t>(exactStep);

    fCompressor =
        fCompressorRising ? fCompressor + fCompressorAttackRate : fCompressor * fCompressorFactor;
    if (fCompressor > 1.0F) {
        fCompressorRising = false;
        fCompressor = 1.0F;
    }
    float attackRamp = fRising ? fAttackRate / 64.0F : 0.0F;
    fEnvelope = fRising ? fEnvelope + fAttackRate : fEnvelope * fDecayFactor;
    if (fEnvelope > 1.0F) {
        fRising = false;
        fEnvelope = 1.0F;
    }
    const float target = Target();
    float ramp = (target - fGain) / 64.0F;
    if (attackRamp <= ramp) {
        attackRamp = 0.0F;
    }

    const uint32_t total = step * 64 + fPhase;
    const size_t count = total >> 14;
    for (size_t k = 0; k < count; ++k) {
        Fetch(fCursor, k, false);
    }
    CCursor ahead = fCursor;
    for (size_t k = count; k < count + 16; ++k) {
        Fetch(ahead, k, true);
    }

    const float* table = CDSPTables::GetInterpolationTable();
    uint32_t p = fPhase;
    for (size_t frame = 0; frame < 64; ++frame) {
        const size_t n = p >> 14;
        const size_t i = (p >> 6) & 255;
        float left = table[5 * 256 + i] * fLeft[n];
        float right = table[5 * 256 + i] * fRight[n];
        for (size_t tap = 1; tap < 6; ++tap) {
            left = left + table[(5 - tap) * 256 + i] * fLeft[n + tap];
            right = right + table[(5 - tap) * 256 + i] * fRight[n + tap];
        }
        left = left * fGain;
        right = right * fGain;
        if (attackRamp > 0.0F && attackRamp > ramp) {
            fGain = fGain + attackRamp;
            if (fGain >= target) {
                fGain = target;
                attackRamp = 0.0F;
                ramp = 0.0F;
            }
        } else {
            fGain = fGain + ramp;
        }
        block.fLeft[frame] += left;
        block.fRight[frame] += right;
        p += step;
    }
    fPhase = total & 0x3fff;
    return true;
}

} // namespace NSLOPDLL

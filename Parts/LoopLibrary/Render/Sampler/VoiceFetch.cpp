#include "LoopLibrary/Render/Sampler/VoiceFetch.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

constexpr float kFadeFloor = 1e-6F;

// Where a fetch writes; moves on with what has been written.
struct CFetchTarget {
    float* fLeft;
    float* fRight; // null for a mono sample

    void Advance(int32_t count) {
        fLeft += count;
        fRight += fRight != nullptr ? count : 0;
    }
};

// Frames of a straight run: no more than are wanted, and at least the one that ends it.
int32_t RunLength(int64_t untilTurn, int32_t wanted) {
    return static_cast<int32_t>(std::clamp<int64_t>(untilTurn, 1, wanted));
}

void ReadForward(const CABCWaveSample& sample, int32_t first, int32_t count,
                 const CFetchTarget& target) {
    sample.GetFloatSamples(first, count, target.fLeft, kChannel_Left);
    if (target.fRight != nullptr) {
        sample.GetFloatSamples(first, count, target.fRight, kChannel_Right);
    }
}

void ReadBackward(const CABCWaveSample& sample, int32_t first, int32_t count,
                  const CFetchTarget& target) {
    ReadForward(sample, first - (count - 1), count, target);
    std::reverse(target.fLeft, target.fLeft + count);
    if (target.fRight != nullptr) {
        std::reverse(target.fRight, target.fRight + count);
    }
}

// Fade and level of a run in the tail. Before it both are exactly 1.0 and change nothing.
void ShapeTail(SamplerVoice& voice, int32_t count, const CFetchTarget& target) {
    float fade = voice.fFadeGain;
    float level = voice.fTailLevel;
    const float levelStep =
        voice.fDirection == kVoiceDirection_Forward ? voice.fTailLevelStep : -voice.fTailLevelStep;
    for (int32_t i = 0; i < count; ++i) {
        target.fLeft[i] = target.fLeft[i] * fade * level;
        if (target.fRight != nullptr) {
            target.fRight[i] = target.fRight[i] * fade * level;
        }
        fade = std::max(fade - voice.fFadeStep, kFadeFloor);
        level += levelStep;
    }
    voice.fFadeGain = fade;
    voice.fTailLevel = level;
}

// In the look-ahead a voice turns like any other, but a tail does not begin.
template <bool kLookAhead>
void FetchSliceFrames(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count,
                      CFetchTarget& target) {
    while (count > 0) {
        const bool backward = voice.fDirection == kVoiceDirection_Backward;
        const int64_t untilTurn = backward ? int64_t{voice.fPosition} - voice.fRangeStart
                                           : int64_t{voice.fRangeEnd} - voice.fPosition;
        const int32_t run = RunLength(untilTurn, count);
        if (backward) {
            ReadBackward(sample, voice.fPosition, run, target);
        } else {
            ReadForward(sample, voice.fPosition, run, target);
        }
        if (voice.fInTail) {
            ShapeTail(voice, run, target);
        }
        target.Advance(run);
        count -= run;

        if (backward) {
            voice.fPosition -= run;
            if (voice.fPosition <= voice.fRangeStart) {
                voice.fDirection = kVoiceDirection_Forward;
            }
        } else if (run < untilTurn) {
            voice.fPosition += run;
        } else {
            // The last frame of the source is fetched once more on the way back.
            voice.fPosition += run - 1;
            voice.fInTail = voice.fInTail || !kLookAhead;
            voice.fDirection = voice.fPosition > voice.fRangeStart ? kVoiceDirection_Backward
                                                                   : kVoiceDirection_Forward;
        }
    }
}

void FetchPlainFrames(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count,
                      CFetchTarget& target) {
    while (count > 0 && voice.fState != kVoiceState_Off) {
        const int64_t untilEnd = int64_t{voice.fRangeEnd} - voice.fPosition;
        const int32_t run = RunLength(untilEnd, count);
        ReadForward(sample, voice.fPosition, run, target);
        target.Advance(run);
        count -= run;
        voice.fPosition += run;
        if (run >= untilEnd) {
            if (voice.fDirection == kVoiceDirection_Loop) {
                voice.fPosition = voice.fRangeStart;
            } else {
                voice.fState = kVoiceState_Off;
            }
        }
    }
    std::fill_n(target.fLeft, count, 0.0F);
    if (target.fRight != nullptr) {
        std::fill_n(target.fRight, count, 0.0F);
    }
    target.Advance(count);
}

} // namespace

void FetchSliceVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept {
    CFetchTarget target{left, sample.IsStereo() ? right : nullptr};
    FetchSliceFrames<false>(voice, sample, count, target);
    SamplerVoice ahead = voice;
    FetchSliceFrames<true>(ahead, sample, kFetchLookAhead, target);
}

void FetchPlainVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept {
    CFetchTarget target{left, sample.IsStereo() ? right : nullptr};
    FetchPlainFrames(voice, sample, count, target);
    SamplerVoice ahead = voice;
    FetchPlainFrames(ahead, sample, kFetchLookAhead, target);
}

} // namespace NSLOPDLL

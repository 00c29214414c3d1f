#include "LoopLibrary/Render/Sampler/VoiceFetch.h"

#include "LoopLibrary/Render/Forms/RenderForms.h"
#include "LoopLibrary/Render/Sampler/TailShape.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

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
    GetRenderForm().fReverse(target.fLeft, count);
    if (target.fRight != nullptr) {
        GetRenderForm().fReverse(target.fRight, count);
    }
}

// Fade and level of a run in the tail. Before it both are exactly 1.0 and change nothing.
void ShapeTail(SamplerVoice& voice, int32_t count, const CFetchTarget& target) {
    const float levelStep =
        voice.fDirection == kVoiceDirection_Forward ? voice.fTailLevelStep : -voice.fTailLevelStep;
    CTailShape shape{voice.fFadeGain, voice.fFadeStep, voice.fTailLevel, levelStep};
    GetRenderForm().fShapeTail(shape, count, target.fLeft, target.fRight);
    voice.fFadeGain = shape.fFade;
    voice.fTailLevel = shape.fLevel;
}

// Frames that a slice voice fetches before it turns.
int64_t FramesUntilTurn(const SamplerVoice& voice) {
    return voice.fDirection == kVoiceDirection_Backward
               ? int64_t{voice.fPosition} - voice.fRangeStart
               : int64_t{voice.fRangeEnd} - voice.fPosition;
}

// A tail of one frame has nowhere to go, neither forward nor back: a voice that has turned in it
// stays on its frame for good.
bool StandsStill(const SamplerVoice& voice) {
    return voice.fDirection == kVoiceDirection_Forward && voice.fPosition <= voice.fRangeStart &&
           int64_t{voice.fRangeEnd} - voice.fPosition <= 1;
}

void ReadOneFrame(const CABCWaveSample& sample, int32_t frame, int32_t count,
                  const CFetchTarget& target) {
    ReadForward(sample, frame, 1, target);
    std::fill_n(target.fLeft, count, *target.fLeft);
    if (target.fRight != nullptr) {
        std::fill_n(target.fRight, count, *target.fRight);
    }
}

// A straight run, from which the voice has not moved on yet.
void ReadRun(const SamplerVoice& voice, const CABCWaveSample& sample, int32_t count,
             const CFetchTarget& target) {
    if (voice.fDirection == kVoiceDirection_Backward) {
        ReadBackward(sample, voice.fPosition, count, target);
    } else {
        ReadForward(sample, voice.fPosition, count, target);
    }
}

// What the voice reads in the next block. Voices read in more places than the processor foresees.
void PrefetchNext(const SamplerVoice& voice, const CABCWaveSample& sample, int32_t count) {
    const int64_t position = voice.fPosition;
    if (voice.fDirection == kVoiceDirection_Backward) {
        sample.Prefetch(position - int64_t{2} * count - kFetchLookAhead, count);
    } else {
        sample.Prefetch(position + count + kFetchLookAhead, count);
    }
}

// In the look-ahead a voice turns like any other, but a tail does not begin.
template <bool kLookAhead>
void FetchSliceFrames(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count,
                      CFetchTarget& target) {
    while (count > 0) {
        const bool backward = voice.fDirection == kVoiceDirection_Backward;
        const int64_t untilTurn = FramesUntilTurn(voice);
        const bool stands = StandsStill(voice);
        const int32_t run = stands ? count : RunLength(untilTurn, count);
        if (stands) {
            ReadOneFrame(sample, voice.fPosition, run, target);
        } else {
            ReadRun(voice, sample, run, target);
        }
        if (voice.fInTail) {
            ShapeTail(voice, run, target);
        }
        target.Advance(run);
        count -= run;

        if (stands) {
            continue;
        }
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
    // Most blocks lie with their look-ahead on the way to the next turn: one read gets both.
    if (FramesUntilTurn(voice) > int64_t{count} + kFetchLookAhead) {
        PrefetchNext(voice, sample, count);
        ReadRun(voice, sample, count + kFetchLookAhead, target);
        if (voice.fInTail) {
            ShapeTail(voice, count, target);
            target.Advance(count);
            SamplerVoice ahead = voice;
            ShapeTail(ahead, kFetchLookAhead, target);
        }
        voice.fPosition += voice.fDirection == kVoiceDirection_Backward ? -count : count;
        return;
    }
    FetchSliceFrames<false>(voice, sample, count, target);
    FetchLookAhead(voice, sample, left + count, right + count);
}

void FetchPlainVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept {
    CFetchTarget target{left, sample.IsStereo() ? right : nullptr};
    if (int64_t{voice.fRangeEnd} - voice.fPosition > int64_t{count} + kFetchLookAhead) {
        ReadForward(sample, voice.fPosition, count + kFetchLookAhead, target);
        voice.fPosition += count;
        return;
    }
    FetchPlainFrames(voice, sample, count, target);
    FetchLookAhead(voice, sample, left + count, right + count);
}

void FetchFrames(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                 float* right) noexcept {
    CFetchTarget target{left, sample.IsStereo() ? right : nullptr};
    if (voice.fKind == kVoiceKind_Slice) {
        FetchSliceFrames<false>(voice, sample, count, target);
    } else {
        FetchPlainFrames(voice, sample, count, target);
    }
}

void FetchLookAhead(const SamplerVoice& voice, const CABCWaveSample& sample, float* left,
                    float* right) noexcept {
    CFetchTarget target{left, sample.IsStereo() ? right : nullptr};
    SamplerVoice ahead = voice;
    if (voice.fKind == kVoiceKind_Slice) {
        FetchSliceFrames<true>(ahead, sample, kFetchLookAhead, target);
    } else {
        FetchPlainFrames(ahead, sample, kFetchLookAhead, target);
    }
}

} // namespace NSLOPDLL

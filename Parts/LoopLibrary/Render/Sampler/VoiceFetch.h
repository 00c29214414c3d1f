#pragma once

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sampler/SamplerVoice.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// Frames that are fetched beyond a block for the interpolator to look at.
constexpr int32_t kFetchLookAhead = 16;
/// The largest step through the source, 64 frames a frame in 14 bits of fraction.
constexpr uint32_t kLargestStep = 0x100000;
/// The most that one fetch gets, and the look-ahead: a block at a step of eight frames, or an
/// eighth of one at the largest step.
constexpr int32_t kFetchedAtOnce = 512;
constexpr int32_t kFetchCapacity = kFetchedAtOnce + kFetchLookAhead;

/// Fetches `count` frames and the look-ahead for a slice voice, with the fade and the level of its
/// tail. The voice moves on by `count` frames; the look-ahead leaves no trace in it. `right` is
/// written only for a stereo sample.
void FetchSliceVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept LOOP_REALTIME;

/// The same for a plain voice, which has neither tail nor fade: it goes round its range, or stops
/// behind it and fetches silence from there on.
void FetchPlainVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept LOOP_REALTIME;

/// The two halves of these, for a voice of either kind and a block that is fetched in parts: the
/// frames alone, and what lies ahead of a voice that has come to the block's end.
void FetchFrames(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                 float* right) noexcept LOOP_REALTIME;
void FetchLookAhead(const SamplerVoice& voice, const CABCWaveSample& sample, float* left,
                    float* right) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

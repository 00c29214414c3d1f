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
/// The largest fetch: 64 frames of 64 source frames each, and the look-ahead.
constexpr int32_t kFetchCapacity = 64 * 64 + kFetchLookAhead;

/// Fetches `count` frames and the look-ahead for a slice voice, with the fade and the level of its
/// tail. The voice moves on by `count` frames; the look-ahead leaves no trace in it. `right` is
/// written only for a stereo sample.
void FetchSliceVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept LOOP_REALTIME;

/// The same for a plain voice, which has neither tail nor fade: it goes round its range, or stops
/// behind it and fetches silence from there on.
void FetchPlainVoice(SamplerVoice& voice, const CABCWaveSample& sample, int32_t count, float* left,
                     float* right) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

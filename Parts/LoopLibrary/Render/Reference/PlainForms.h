// The hot loops in plain floats, one frame after the other. The forms in the lanes of a vector
// perform the same operations in the same order in each lane, so that all forms give the same bits.
// Tests and benchmarks hold the others to these; the library has a faster form for each.
#pragma once

#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"

namespace NSLOPDLL {

/// One block of one voice.
void InterpolateScalar(const CInterpolationJob& job) noexcept LOOP_REALTIME;

/// Filters one channel of 64 frames in place.
void FilterChannel(const CEqualizerCoefficients& coefficients, CEqualizerState& state,
                   float* frames) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

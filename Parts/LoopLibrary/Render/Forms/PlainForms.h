// The hot loops one frame after the other, which run on any processor. The forms in the lanes of a
// vector perform the same operations in the same order in each lane, so that all forms give the
// same bits; tests and benchmarks hold the others to these. RenderForms.h says what each does.
#pragma once

#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"
#include "LoopLibrary/Render/Forms/RenderForms.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Sampler/TailShape.h"

namespace NSLOPDLL {

void InterpolateScalar(const CInterpolationJob& job) noexcept LOOP_REALTIME;

/// Filters one channel of 64 frames in place.
void FilterChannel(const CEqualizerCoefficients& coefficients, CEqualizerState& state,
                   float* frames) noexcept LOOP_REALTIME;
void FilterStereoPlain(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                       CEqualizerState& rightState,
                       const CBlockBuffers& buffers) noexcept LOOP_REALTIME;

void ReadFloats16Plain(const int16_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void ReadFloats24Plain(const int32_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void StoreFloats16Plain(const float* values, int32_t count, int16_t* samples) noexcept;
void StoreFloats24Plain(const float* values, int32_t count, int32_t* samples) noexcept;
void Narrow24Plain(const int32_t* samples, int32_t count, int16_t* values) noexcept;
SPeaks FindPeaksPlain(const int16_t* values, int32_t count) noexcept;
void FillFourRampsPlain(float* const* targets, float* values,
                        const float* steps) noexcept LOOP_REALTIME;
void ReversePlain(float* values, int32_t count) noexcept LOOP_REALTIME;

/// The first form of every processor.
inline constexpr SRenderForm kPlainForm = {
    "plain",           InterpolateScalar,  FilterStereoPlain,  ReadFloats16Plain,
    ReadFloats24Plain, StoreFloats16Plain, StoreFloats24Plain, Narrow24Plain,
    FindPeaksPlain,    FillFourRampsPlain, ShapeTailPlain,     ReversePlain};

} // namespace NSLOPDLL

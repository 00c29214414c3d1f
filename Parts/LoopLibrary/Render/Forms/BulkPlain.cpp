#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"
#include "LoopLibrary/Render/Sample/C16BitWaveSample.h"
#include "LoopLibrary/Render/Sample/C24BitWaveSample.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

// Nothing for a count of 0 or less.
template <auto kConvert, typename From, typename To>
void Convert(const From* from, int32_t count, To* to) {
    for (int32_t i = 0; i < count; ++i) {
        to[i] = kConvert(from[i]);
    }
}

} // namespace

void ReadFloats16Plain(const int16_t* samples, int32_t count, float* values) noexcept {
    Convert<C16BitDepth::ToFloat>(samples, count, values);
}

void ReadFloats24Plain(const int32_t* samples, int32_t count, float* values) noexcept {
    Convert<C24BitDepth::ToFloat>(samples, count, values);
}

void StoreFloats16Plain(const float* values, int32_t count, int16_t* samples) noexcept {
    Convert<C16BitDepth::FromFloat>(values, count, samples);
}

void StoreFloats24Plain(const float* values, int32_t count, int32_t* samples) noexcept {
    Convert<C24BitDepth::FromFloat>(values, count, samples);
}

void Narrow24Plain(const int32_t* samples, int32_t count, int16_t* values) noexcept {
    Convert<C24BitDepth::To16>(samples, count, values);
}

SPeaks FindPeaksPlain(const int16_t* values, int32_t count) noexcept {
    SPeaks peaks;
    for (int32_t i = 0; i < count; ++i) {
        peaks.fLow = std::min(peaks.fLow, values[i]);
        peaks.fHigh = std::max(peaks.fHigh, values[i]);
    }
    return peaks;
}

void FillFourRampsPlain(float* const* targets, float* values, const float* steps) noexcept {
    for (int32_t ramp = 0; ramp < 4; ++ramp) {
        for (int32_t i = 0; i < kBlockFrames; ++i) {
            targets[ramp][i] = values[ramp];
            values[ramp] += steps[ramp];
        }
    }
}

void ReversePlain(float* values, int32_t count) noexcept {
    std::reverse(values, values + count);
}

} // namespace NSLOPDLL

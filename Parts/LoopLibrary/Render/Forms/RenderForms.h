// The faster forms of the hot loops of rendering, and which of them this processor runs.
#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace NSLOPDLL {

struct CBlockBuffers;
struct CEqualizerCoefficients;
struct CEqualizerState;
struct CInterpolationJob;
struct CTailShape;

/// The lowest and the highest of some values; of none, what is neutral in a union.
struct SPeaks {
    int16_t fLow = INT16_MAX;
    int16_t fHigh = INT16_MIN;
    friend bool operator==(const SPeaks&, const SPeaks&) = default;
};

/// Forms differ in speed alone: all give the same bits. No array needs alignment, and none overlaps
/// another of the same call.
struct SRenderForm {
    const char* fName;
    /// One block of one voice, or a part of one.
    void (*fInterpolate)(const CInterpolationJob& job) noexcept LOOP_REALTIME;
    /// Filters both channels of a block in place.
    void (*fFilterStereo)(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                          CEqualizerState& rightState,
                          const CBlockBuffers& buffers) noexcept LOOP_REALTIME;
    /// Stored samples as normalized floats, and back (SampleConversion.h).
    void (*fReadFloats16)(const int16_t* samples, int32_t count,
                          float* values) noexcept LOOP_REALTIME;
    void (*fReadFloats24)(const int32_t* samples, int32_t count,
                          float* values) noexcept LOOP_REALTIME;
    void (*fStoreFloats16)(const float* values, int32_t count, int16_t* samples) noexcept;
    void (*fStoreFloats24)(const float* values, int32_t count, int32_t* samples) noexcept;
    /// Samples of 24 bits without their lowest 8; of a wider word bits 8 to 23.
    void (*fNarrow24)(const int32_t* samples, int32_t count, int16_t* values) noexcept;
    SPeaks (*fFindPeaks)(const int16_t* values, int32_t count) noexcept;
    /// Four ramps over the 64 frames of a block: each writes its value and adds its step, frame by
    /// frame. Leaves in `values` what follows the last frame.
    void (*fFillFourRamps)(float* const* targets, float* values,
                           const float* steps) noexcept LOOP_REALTIME;
    /// Frames of a tail in place (TailShape.h).
    void (*fShapeTail)(CTailShape& shape, int32_t count, float* left,
                       float* right) noexcept LOOP_REALTIME;
    void (*fReverse)(float* values, int32_t count) noexcept LOOP_REALTIME;
};

/// The forms that this processor can run: the plain one first, the fastest last. At most three.
std::span<const SRenderForm> GetRenderForms() noexcept LOOP_REALTIME;

/// The form in use: the fastest unless one was forced. Any thread.
const SRenderForm& GetRenderForm() noexcept LOOP_REALTIME;

/// For tests and benchmarks, which link the insides: makes the form of this name the one in use, or
/// the fastest one again for an empty name. False, without effect, where there is no such form
/// here.
bool ForceRenderForm(std::string_view name) noexcept;

} // namespace NSLOPDLL

// Four output frames in the lanes of a vector. SSE2 is in every x86-64 processor.

#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"

#include <emmintrin.h>

namespace NSLOPDLL {

namespace {

constexpr int32_t kLanes = 4;
static_assert(kInterpolatedAtOnce % kLanes == 0);

// For each lane its taps in the order of the source frames, and its first source frame.
struct CLane {
    const float* fTaps;
    uint32_t fFrame;
};

__m128 FirstProducts(const CLane& lane, const float* fetch) {
    return _mm_mul_ps(_mm_load_ps(lane.fTaps), _mm_loadu_ps(fetch + lane.fFrame));
}

// Those of taps 4 and 5, in the lower half.
__m128 LastProducts(const CLane& lane, const float* fetch) {
    return _mm_mul_ps(_mm_load_ps(lane.fTaps + 4), _mm_loadu_ps(fetch + lane.fFrame + 4));
}

__m128 SumTaps(const CLane* lanes, const float* fetch) {
    __m128 p0 = FirstProducts(lanes[0], fetch);
    __m128 p1 = FirstProducts(lanes[1], fetch);
    __m128 p2 = FirstProducts(lanes[2], fetch);
    __m128 p3 = FirstProducts(lanes[3], fetch);
    _MM_TRANSPOSE4_PS(p0, p1, p2, p3);
    const __m128 q01 =
        _mm_unpacklo_ps(LastProducts(lanes[0], fetch), LastProducts(lanes[1], fetch));
    const __m128 q23 =
        _mm_unpacklo_ps(LastProducts(lanes[2], fetch), LastProducts(lanes[3], fetch));
    __m128 sum = _mm_add_ps(p0, p1);
    sum = _mm_add_ps(sum, p2);
    sum = _mm_add_ps(sum, p3);
    sum = _mm_add_ps(sum, _mm_movelh_ps(q01, q23));
    return _mm_add_ps(sum, _mm_movehl_ps(q23, q01));
}

void AddTo(float* output, __m128 values) {
    _mm_storeu_ps(output, _mm_add_ps(_mm_loadu_ps(output), values));
}

// At a step of one frame a lane's source frames are those of the lane before it, moved on by one:
// four neighbours are one load a tap, and nothing has to be turned.
__m128 SumUnitTaps(const __m128* taps, const float* fetch) {
    __m128 sum = _mm_add_ps(_mm_mul_ps(taps[0], _mm_loadu_ps(fetch)),
                            _mm_mul_ps(taps[1], _mm_loadu_ps(fetch + 1)));
    sum = _mm_add_ps(sum, _mm_mul_ps(taps[2], _mm_loadu_ps(fetch + 2)));
    sum = _mm_add_ps(sum, _mm_mul_ps(taps[3], _mm_loadu_ps(fetch + 3)));
    sum = _mm_add_ps(sum, _mm_mul_ps(taps[4], _mm_loadu_ps(fetch + 4)));
    return _mm_add_ps(sum, _mm_mul_ps(taps[5], _mm_loadu_ps(fetch + 5)));
}

void InterpolateUnitStep(const CInterpolationJob& job, const float* table) {
    const float* row = table + ((job.fPhase >> 6) & 255) * kPhaseStride;
    __m128 taps[kInterpolationTaps];
    for (size_t tap = 0; tap < kInterpolationTaps; ++tap) {
        taps[tap] = _mm_set1_ps(row[tap]);
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    const float* leftFetch = job.fLeftFetch + (job.fPhase >> 14);
    const float* rightFetch = job.fRightFetch + (job.fPhase >> 14);
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        const __m128 gains = _mm_loadu_ps(job.fGains + i);
        const __m128 left = _mm_mul_ps(SumUnitTaps(taps, leftFetch + i), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : _mm_mul_ps(SumUnitTaps(taps, rightFetch + i), gains));
    }
}

} // namespace

void InterpolateSse2(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    if (job.fStep == kUnitStep) {
        InterpolateUnitStep(job, table);
        return;
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        CLane lanes[kLanes];
        for (CLane& lane : lanes) {
            lane = {table + ((phase >> 6) & 255) * kPhaseStride, phase >> 14};
            phase += job.fStep;
        }
        const __m128 gains = _mm_loadu_ps(job.fGains + i);
        const __m128 left = _mm_mul_ps(SumTaps(lanes, job.fLeftFetch), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : _mm_mul_ps(SumTaps(lanes, job.fRightFetch), gains));
    }
}

} // namespace NSLOPDLL

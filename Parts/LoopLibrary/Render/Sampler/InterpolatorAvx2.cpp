// Eight output frames in the lanes of a vector. Each function names its instruction set, so that
// nothing else of the program is built for it; fused multiply-add is not in that set.

#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"

#include <immintrin.h>

#define LOOP_AVX2 __attribute__((target("avx2")))
// The compiler leaves some of these helpers as calls, which pass their vectors through memory.
#define LOOP_AVX2_INLINE LOOP_AVX2 __attribute__((always_inline)) inline

namespace NSLOPDLL {

namespace {

constexpr int32_t kLanes = 8;
static_assert(kInterpolatedAtOnce % kLanes == 0);
static_assert(kPhaseStride == kLanes);

constexpr int kFirstHalves = _MM_SHUFFLE(1, 0, 1, 0);
constexpr int kSecondHalves = _MM_SHUFFLE(3, 2, 3, 2);
constexpr int kLowerLanes = 0x20;
constexpr int kUpperLanes = 0x31;

// The products of four output frames, turned: lane by lane tap 0 (and in the upper half tap 4), tap
// 1 (and tap 5), tap 2, tap 3.
struct CTurned {
    __m256 fTaps04;
    __m256 fTaps15;
    __m256 fTaps2;
    __m256 fTaps3;
};

LOOP_AVX2_INLINE CTurned Turn(const __m256* taps, const float* fetch, const uint32_t* frames) {
    const __m256 p0 = _mm256_mul_ps(taps[0], _mm256_loadu_ps(fetch + frames[0]));
    const __m256 p1 = _mm256_mul_ps(taps[1], _mm256_loadu_ps(fetch + frames[1]));
    const __m256 p2 = _mm256_mul_ps(taps[2], _mm256_loadu_ps(fetch + frames[2]));
    const __m256 p3 = _mm256_mul_ps(taps[3], _mm256_loadu_ps(fetch + frames[3]));
    const __m256 a = _mm256_unpacklo_ps(p0, p1);
    const __m256 b = _mm256_unpacklo_ps(p2, p3);
    const __m256 c = _mm256_unpackhi_ps(p0, p1);
    const __m256 d = _mm256_unpackhi_ps(p2, p3);
    return {_mm256_shuffle_ps(a, b, kFirstHalves), _mm256_shuffle_ps(a, b, kSecondHalves),
            _mm256_shuffle_ps(c, d, kFirstHalves), _mm256_shuffle_ps(c, d, kSecondHalves)};
}

LOOP_AVX2_INLINE __m256 SumTaps(const __m256* taps, const float* fetch, const uint32_t* frames) {
    const CTurned low = Turn(taps, fetch, frames);
    const CTurned high = Turn(taps + 4, fetch, frames + 4);
    __m256 sum = _mm256_add_ps(_mm256_permute2f128_ps(low.fTaps04, high.fTaps04, kLowerLanes),
                               _mm256_permute2f128_ps(low.fTaps15, high.fTaps15, kLowerLanes));
    sum = _mm256_add_ps(sum, _mm256_permute2f128_ps(low.fTaps2, high.fTaps2, kLowerLanes));
    sum = _mm256_add_ps(sum, _mm256_permute2f128_ps(low.fTaps3, high.fTaps3, kLowerLanes));
    sum = _mm256_add_ps(sum, _mm256_permute2f128_ps(low.fTaps04, high.fTaps04, kUpperLanes));
    return _mm256_add_ps(sum, _mm256_permute2f128_ps(low.fTaps15, high.fTaps15, kUpperLanes));
}

LOOP_AVX2_INLINE void AddTo(float* output, __m256 values) {
    _mm256_storeu_ps(output, _mm256_add_ps(_mm256_loadu_ps(output), values));
}

// At a step of one frame a lane's source frames are those of the lane before it, moved on by one:
// eight neighbours are one load a tap, and nothing has to be turned.
LOOP_AVX2_INLINE __m256 SumUnitTaps(const __m256* taps, const float* fetch) {
    __m256 sum = _mm256_add_ps(_mm256_mul_ps(taps[0], _mm256_loadu_ps(fetch)),
                               _mm256_mul_ps(taps[1], _mm256_loadu_ps(fetch + 1)));
    sum = _mm256_add_ps(sum, _mm256_mul_ps(taps[2], _mm256_loadu_ps(fetch + 2)));
    sum = _mm256_add_ps(sum, _mm256_mul_ps(taps[3], _mm256_loadu_ps(fetch + 3)));
    sum = _mm256_add_ps(sum, _mm256_mul_ps(taps[4], _mm256_loadu_ps(fetch + 4)));
    return _mm256_add_ps(sum, _mm256_mul_ps(taps[5], _mm256_loadu_ps(fetch + 5)));
}

LOOP_AVX2 void InterpolateUnitStep(const CInterpolationJob& job, const float* table) {
    const float* row = table + ((job.fPhase >> 6) & 255) * kPhaseStride;
    __m256 taps[kInterpolationTaps];
    for (size_t tap = 0; tap < kInterpolationTaps; ++tap) {
        taps[tap] = _mm256_broadcast_ss(row + tap);
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    const float* leftFetch = job.fLeftFetch + (job.fPhase >> 14);
    const float* rightFetch = job.fRightFetch + (job.fPhase >> 14);
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        const __m256 gains = _mm256_loadu_ps(job.fGains + i);
        const __m256 left = _mm256_mul_ps(SumUnitTaps(taps, leftFetch + i), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : _mm256_mul_ps(SumUnitTaps(taps, rightFetch + i), gains));
    }
}

} // namespace

LOOP_AVX2 void InterpolateAvx2(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    if (job.fStep == kUnitStep) {
        InterpolateUnitStep(job, table);
        return;
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        uint32_t frames[kLanes];
        __m256 taps[kLanes];
        for (int32_t lane = 0; lane < kLanes; ++lane) {
            frames[lane] = phase >> 14;
            taps[lane] = _mm256_load_ps(table + ((phase >> 6) & 255) * kPhaseStride);
            phase += job.fStep;
        }
        const __m256 gains = _mm256_loadu_ps(job.fGains + i);
        const __m256 left = _mm256_mul_ps(SumTaps(taps, job.fLeftFetch, frames), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : _mm256_mul_ps(SumTaps(taps, job.fRightFetch, frames), gains));
    }
}

} // namespace NSLOPDLL

#undef LOOP_AVX2_INLINE
#undef LOOP_AVX2

// Eight output frames in the lanes of a vector. Each function names its instruction set, so that
// nothing else of the program is built for it; fused multiply-add is not in that set.

#include "LoopLibrary/Render/CDSPTables.h"
#include "LoopLibrary/Render/Interpolator.h"

#include <immintrin.h>

#define LOOP_AVX2 __attribute__((target("avx2")))

namespace NSLOPDLL {

namespace {

constexpr int32_t kLanes = 8;

struct CLane {
    const float* fTaps;
    uint32_t fFrame;
};

LOOP_AVX2 inline __m256 LoadPair(const float* low, const float* high) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
}

// Four products of a lane from tap `tap` on, and those of the lane four further in the upper half.
LOOP_AVX2 inline __m256 Products(const CLane* lane, const float* fetch, int32_t tap) {
    const __m256 taps = LoadPair(lane[0].fTaps + tap, lane[4].fTaps + tap);
    const __m256 frames = LoadPair(fetch + lane[0].fFrame + tap, fetch + lane[4].fFrame + tap);
    return _mm256_mul_ps(taps, frames);
}

LOOP_AVX2 inline __m256 SumTaps(const CLane* lanes, const float* fetch) {
    const __m256 p0 = Products(lanes, fetch, 0);
    const __m256 p1 = Products(lanes + 1, fetch, 0);
    const __m256 p2 = Products(lanes + 2, fetch, 0);
    const __m256 p3 = Products(lanes + 3, fetch, 0);
    const __m256 a = _mm256_unpacklo_ps(p0, p1); // tap 0 of two lanes, then tap 1
    const __m256 b = _mm256_unpacklo_ps(p2, p3);
    const __m256 c = _mm256_unpackhi_ps(p0, p1); // taps 2 and 3
    const __m256 d = _mm256_unpackhi_ps(p2, p3);
    const __m256 e = _mm256_unpacklo_ps(Products(lanes, fetch, 4), Products(lanes + 1, fetch, 4));
    const __m256 f =
        _mm256_unpacklo_ps(Products(lanes + 2, fetch, 4), Products(lanes + 3, fetch, 4));
    constexpr int kFirstHalves = _MM_SHUFFLE(1, 0, 1, 0);
    constexpr int kSecondHalves = _MM_SHUFFLE(3, 2, 3, 2);
    __m256 sum = _mm256_add_ps(_mm256_shuffle_ps(a, b, kFirstHalves),
                               _mm256_shuffle_ps(a, b, kSecondHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(c, d, kFirstHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(c, d, kSecondHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(e, f, kFirstHalves));
    return _mm256_add_ps(sum, _mm256_shuffle_ps(e, f, kSecondHalves));
}

LOOP_AVX2 inline void AddTo(float* output, __m256 values) {
    _mm256_storeu_ps(output, _mm256_add_ps(_mm256_loadu_ps(output), values));
}

} // namespace

LOOP_AVX2 void InterpolateAvx2(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    const bool mono = job.fLeftFetch == job.fRightFetch;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < kBlockFrames; i += kLanes) {
        CLane lanes[kLanes];
        for (CLane& lane : lanes) {
            lane = {table + ((phase >> 6) & 255) * kPhaseStride, phase >> 14};
            phase += job.fStep;
        }
        const __m256 gains = _mm256_loadu_ps(job.fGains + i);
        const __m256 left = _mm256_mul_ps(SumTaps(lanes, job.fLeftFetch), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : _mm256_mul_ps(SumTaps(lanes, job.fRightFetch), gains));
    }
}

} // namespace NSLOPDLL

#undef LOOP_AVX2

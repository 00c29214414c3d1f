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

constexpr int32_t kLanesOfHalf = 4;

// What an output frame is summed from: its source frames and its row of the table.
struct CPlace {
    const float* fFetch;
    const float* fTaps;
};

// The products of four taps, of an output frame in each half: of one frame's two channels, which
// have the same taps, or of two frames.
template <bool kSameTaps>
LOOP_AVX2_INLINE __m256 FourProducts(const CPlace& lower, const CPlace& upper, size_t tap) {
    __m256 taps;
    if constexpr (kSameTaps) {
        taps = _mm256_broadcast_ps(reinterpret_cast<const __m128*>(lower.fTaps + tap));
    } else {
        taps = _mm256_loadu2_m128(upper.fTaps + tap, lower.fTaps + tap);
    }
    return _mm256_mul_ps(taps, _mm256_loadu2_m128(upper.fFetch + tap, lower.fFetch + tap));
}

// Of four neighbours.
class CPlaces {
public:
    LOOP_AVX2_INLINE CPlaces(const float* fetch, const float* table, uint32_t phase, uint32_t step)
        : fPlaces{At(fetch, table, phase), At(fetch, table, phase + step),
                  At(fetch, table, phase + 2 * step), At(fetch, table, phase + 3 * step)} {}

    LOOP_AVX2_INLINE const CPlace& operator[](size_t index) const { return fPlaces[index]; }

private:
    LOOP_AVX2_INLINE static CPlace At(const float* fetch, const float* table, uint32_t phase) {
        return {fetch + (phase >> 14), table + ((phase >> 6) & 255) * kPhaseStride};
    }

    CPlace fPlaces[kLanesOfHalf];
};

// Four output frames in each half: the products are turned, so that a lane is a frame, and summed
// tap by tap.
template <bool kSameTaps>
LOOP_AVX2_INLINE __m256 SumTaps(const CPlaces& lower, const CPlaces& upper) {
    const __m256 p0 = FourProducts<kSameTaps>(lower[0], upper[0], 0);
    const __m256 p1 = FourProducts<kSameTaps>(lower[1], upper[1], 0);
    const __m256 p2 = FourProducts<kSameTaps>(lower[2], upper[2], 0);
    const __m256 p3 = FourProducts<kSameTaps>(lower[3], upper[3], 0);
    const __m256 taps01Low = _mm256_unpacklo_ps(p0, p1);
    const __m256 taps01High = _mm256_unpacklo_ps(p2, p3);
    const __m256 taps23Low = _mm256_unpackhi_ps(p0, p1);
    const __m256 taps23High = _mm256_unpackhi_ps(p2, p3);
    const __m256 taps45Low = _mm256_unpacklo_ps(FourProducts<kSameTaps>(lower[0], upper[0], 4),
                                                FourProducts<kSameTaps>(lower[1], upper[1], 4));
    const __m256 taps45High = _mm256_unpacklo_ps(FourProducts<kSameTaps>(lower[2], upper[2], 4),
                                                 FourProducts<kSameTaps>(lower[3], upper[3], 4));
    __m256 sum = _mm256_add_ps(_mm256_shuffle_ps(taps01Low, taps01High, kFirstHalves),
                               _mm256_shuffle_ps(taps01Low, taps01High, kSecondHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(taps23Low, taps23High, kFirstHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(taps23Low, taps23High, kSecondHalves));
    sum = _mm256_add_ps(sum, _mm256_shuffle_ps(taps45Low, taps45High, kFirstHalves));
    return _mm256_add_ps(sum, _mm256_shuffle_ps(taps45Low, taps45High, kSecondHalves));
}

LOOP_AVX2_INLINE void AddTo(float* output, __m256 values) {
    _mm256_storeu_ps(output, _mm256_add_ps(_mm256_loadu_ps(output), values));
}

LOOP_AVX2_INLINE void AddTo(float* output, __m128 values) {
    _mm_storeu_ps(output, _mm_add_ps(_mm_loadu_ps(output), values));
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

// Four frames at a time, left in the lower half, right in the upper one.
LOOP_AVX2 void InterpolateStereo(const CInterpolationJob& job, const float* table) {
    const CBlockBuffers output = job.fOutput;
    const uint32_t step = job.fStep;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLanesOfHalf) {
        const CPlaces left(job.fLeftFetch, table, phase, step);
        const CPlaces right(job.fRightFetch, table, phase, step);
        const __m256 gains = _mm256_broadcast_ps(reinterpret_cast<const __m128*>(job.fGains + i));
        const __m256 both = _mm256_mul_ps(SumTaps<true>(left, right), gains);
        AddTo(output.fLeft + i, _mm256_castps256_ps128(both));
        AddTo(output.fRight + i, _mm256_extractf128_ps(both, 1));
        phase += kLanesOfHalf * step;
    }
}

// Eight frames at a time, the first four in the lower half.
LOOP_AVX2 void InterpolateMono(const CInterpolationJob& job, const float* table) {
    const CBlockBuffers output = job.fOutput;
    const uint32_t step = job.fStep;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        const CPlaces first(job.fLeftFetch, table, phase, step);
        const CPlaces second(job.fLeftFetch, table, phase + kLanesOfHalf * step, step);
        const __m256 both =
            _mm256_mul_ps(SumTaps<false>(first, second), _mm256_loadu_ps(job.fGains + i));
        AddTo(output.fLeft + i, both);
        AddTo(output.fRight + i, both);
        phase += kLanes * step;
    }
}

} // namespace

LOOP_AVX2 void InterpolateAvx2(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    if (job.fStep == kUnitStep) {
        InterpolateUnitStep(job, table);
    } else if (job.fLeftFetch == job.fRightFetch) {
        InterpolateMono(job, table);
    } else {
        InterpolateStereo(job, table);
    }
}

} // namespace NSLOPDLL

#undef LOOP_AVX2_INLINE
#undef LOOP_AVX2

#include "LoopLibrary/Render/Forms/BulkSse2.h"

#include "LoopLibrary/Render/Forms/PlainForms.h"

#include <algorithm>

#include <emmintrin.h>

namespace NSLOPDLL {

namespace {

__m128i Load(const void* values) {
    return _mm_loadu_si128(static_cast<const __m128i*>(values));
}

void Store(void* values, __m128i lanes) {
    _mm_storeu_si128(static_cast<__m128i*>(values), lanes);
}

// Rounds half away from zero and clips, like RoundToInteger. The half takes the value's sign by its
// bits: adding minus a half is subtracting it.
__m128i RoundLanes(__m128 values, float scale, float least, float most) {
    const __m128 sign = _mm_and_ps(_mm_cmplt_ps(values, _mm_setzero_ps()), _mm_set1_ps(-0.0F));
    const __m128 half = _mm_or_ps(sign, _mm_set1_ps(0.5F));
    const __m128 rounded = _mm_add_ps(_mm_mul_ps(values, _mm_set1_ps(scale)), half);
    const __m128 numbers = _mm_and_ps(rounded, _mm_cmpord_ps(rounded, rounded));
    return _mm_cvttps_epi32(_mm_max_ps(_mm_min_ps(numbers, _mm_set1_ps(most)), _mm_set1_ps(least)));
}

__m128i Round16(const float* values) {
    return RoundLanes(_mm_loadu_ps(values), 32767.0F, -32768.0F, 32767.0F);
}

// Bits 8 to 23 of each lane, with their sign.
__m128i NarrowLanes(const int32_t* samples) {
    return _mm_srai_epi32(_mm_slli_epi32(Load(samples), 8), 16);
}

// The halves of the vector against each other, the halves of what is left, and so on.
int16_t LeastLane(__m128i lanes) {
    lanes = _mm_min_epi16(lanes, _mm_shuffle_epi32(lanes, _MM_SHUFFLE(1, 0, 3, 2)));
    lanes = _mm_min_epi16(lanes, _mm_shuffle_epi32(lanes, _MM_SHUFFLE(2, 3, 0, 1)));
    lanes = _mm_min_epi16(lanes, _mm_srli_epi32(lanes, 16));
    return static_cast<int16_t>(_mm_cvtsi128_si32(lanes));
}

int16_t GreatestLane(__m128i lanes) {
    lanes = _mm_max_epi16(lanes, _mm_shuffle_epi32(lanes, _MM_SHUFFLE(1, 0, 3, 2)));
    lanes = _mm_max_epi16(lanes, _mm_shuffle_epi32(lanes, _MM_SHUFFLE(2, 3, 0, 1)));
    lanes = _mm_max_epi16(lanes, _mm_srli_epi32(lanes, 16));
    return static_cast<int16_t>(_mm_cvtsi128_si32(lanes));
}

} // namespace

void ReadFloats16Sse2(const int16_t* samples, int32_t count, float* values) noexcept {
    const __m128 scale = _mm_set1_ps(0x1p-15F);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        // Each sample in both halves of a lane; the shift leaves the upper one with its sign.
        const __m128i read = Load(samples + i);
        const __m128i low = _mm_srai_epi32(_mm_unpacklo_epi16(read, read), 16);
        const __m128i high = _mm_srai_epi32(_mm_unpackhi_epi16(read, read), 16);
        _mm_storeu_ps(values + i, _mm_mul_ps(_mm_cvtepi32_ps(low), scale));
        _mm_storeu_ps(values + i + 4, _mm_mul_ps(_mm_cvtepi32_ps(high), scale));
    }
    ReadFloats16Plain(samples + i, count - i, values + i);
}

void ReadFloats24Sse2(const int32_t* samples, int32_t count, float* values) noexcept {
    const __m128 scale = _mm_set1_ps(0x1p-23F);
    int32_t i = 0;
    for (; i + 4 <= count; i += 4) {
        _mm_storeu_ps(values + i, _mm_mul_ps(_mm_cvtepi32_ps(Load(samples + i)), scale));
    }
    ReadFloats24Plain(samples + i, count - i, values + i);
}

void StoreFloats16Sse2(const float* values, int32_t count, int16_t* samples) noexcept {
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        Store(samples + i, _mm_packs_epi32(Round16(values + i), Round16(values + i + 4)));
    }
    StoreFloats16Plain(values + i, count - i, samples + i);
}

void StoreFloats24Sse2(const float* values, int32_t count, int32_t* samples) noexcept {
    int32_t i = 0;
    for (; i + 4 <= count; i += 4) {
        Store(samples + i,
              RoundLanes(_mm_loadu_ps(values + i), 8388607.0F, -8388608.0F, 8388607.0F));
    }
    StoreFloats24Plain(values + i, count - i, samples + i);
}

void Narrow24Sse2(const int32_t* samples, int32_t count, int16_t* values) noexcept {
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        Store(values + i, _mm_packs_epi32(NarrowLanes(samples + i), NarrowLanes(samples + i + 4)));
    }
    Narrow24Plain(samples + i, count - i, values + i);
}

SPeaks FindPeaksSse2(const int16_t* values, int32_t count) noexcept {
    __m128i low = _mm_set1_epi16(INT16_MAX);
    __m128i high = _mm_set1_epi16(INT16_MIN);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        low = _mm_min_epi16(low, Load(values + i));
        high = _mm_max_epi16(high, Load(values + i));
    }
    const SPeaks rest = FindPeaksPlain(values + i, count - i);
    return {std::min(rest.fLow, LeastLane(low)), std::max(rest.fHigh, GreatestLane(high))};
}

} // namespace NSLOPDLL

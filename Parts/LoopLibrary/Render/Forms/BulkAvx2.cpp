// Eight values in the lanes of a vector. Each function names its instruction set, so that nothing
// else of the program is built for it.

#include "LoopLibrary/Render/Forms/BulkAvx2.h"

#include "LoopLibrary/Render/Forms/PlainForms.h"

#include <immintrin.h>

#define LOOP_AVX2 __attribute__((target("avx2")))

namespace NSLOPDLL {

LOOP_AVX2 void ReadFloats16Avx2(const int16_t* samples, int32_t count, float* values) noexcept {
    const __m256 scale = _mm256_set1_ps(0x1p-15F);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m128i read = _mm_loadu_si128(reinterpret_cast<const __m128i*>(samples + i));
        const __m256 wide = _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(read));
        _mm256_storeu_ps(values + i, _mm256_mul_ps(wide, scale));
    }
    ReadFloats16Plain(samples + i, count - i, values + i);
}

LOOP_AVX2 void ReadFloats24Avx2(const int32_t* samples, int32_t count, float* values) noexcept {
    const __m256 scale = _mm256_set1_ps(0x1p-23F);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m256i read = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(samples + i));
        _mm256_storeu_ps(values + i, _mm256_mul_ps(_mm256_cvtepi32_ps(read), scale));
    }
    ReadFloats24Plain(samples + i, count - i, values + i);
}

} // namespace NSLOPDLL

#undef LOOP_AVX2

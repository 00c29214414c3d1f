// What TWIPVectorForm.inc asks of an instruction set, for x86-64. Inlined into functions that may
// name a wider set.
#pragma once

#include <cstdint>

#include <emmintrin.h>

#define TWIP_LANES [[gnu::always_inline]] static inline

using CLanes = __m128i;
using CLaneMask = uint32_t;
constexpr CLaneMask kLanesBelow[] = {0, 1, 3, 7, 15};

TWIP_LANES CLanes LoadLanes(const uint32_t* numbers) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers));
}
// An operand in memory, which SSE2's operations take from an aligned place alone.
TWIP_LANES CLanes LoadAlignedLanes(const uint32_t* numbers) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(numbers));
}
TWIP_LANES void StoreLanes(uint32_t* numbers, CLanes lanes) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(numbers), lanes);
}
TWIP_LANES CLanes SpreadLanes(uint32_t value) {
    return _mm_shuffle_epi32(_mm_cvtsi32_si128(static_cast<int>(value)), 0);
}
TWIP_LANES CLanes AddLanes(CLanes a, CLanes b) {
    return _mm_add_epi32(a, b);
}
TWIP_LANES CLanes SubtractLanes(CLanes a, CLanes b) {
    return _mm_sub_epi32(a, b);
}
TWIP_LANES CLanes FlipLanes(CLanes a, CLanes b) {
    return _mm_xor_si128(a, b);
}
TWIP_LANES CLanes GetSigns(CLanes a) {
    return _mm_srai_epi32(a, 31);
}
TWIP_LANES CLanes DecayLanes(CLanes a) {
    return _mm_srli_epi32(a, 5);
}
TWIP_LANES CLanes MoveUpOne(CLanes a) {
    return _mm_slli_si128(a, 4);
}
TWIP_LANES CLanes MoveUpTwo(CLanes a) {
    return _mm_slli_si128(a, 8);
}
TWIP_LANES bool AllEqual(CLanes a, uint32_t n, CLanes b, uint32_t m) {
    constexpr int kAllBytes = 0xFFFF;
    return _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi32(a, SpreadLanes(n)),
                                           _mm_cmpeq_epi32(b, SpreadLanes(m)))) == kAllBytes;
}
TWIP_LANES CLaneMask CompareLanes(CLanes a, CLanes b) {
    return static_cast<CLaneMask>(_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(a, b))));
}

// The compiler would branch on the carry. A macro, since the compiler keeps the numbers in other
// registers around a function, which costs 5 percent of the decoder's speed.
#define TWIP_PICK_CODE(range, code, longCode, behind, behindLong, count)                           \
    {                                                                                              \
        uint64_t sum = range;                                                                      \
        __asm__(                                                                                   \
            "addq %[code_], %[sum_]\n\t"                                                           \
            "cmovcq %[longCode_], %[code_]\n\t"                                                    \
            "cmovcq %[behindLong_], %[behind_]\n\t"                                                \
            "sbbl $64, %[count_]"                                                                  \
            : [code_] "+r"(code), [behind_] "+r"(behind), [count_] "+r"(count), [sum_] "+r"(sum)   \
            : [longCode_] "r"(longCode), [behindLong_] "r"(behindLong)                             \
            : "cc");                                                                               \
    }

#undef TWIP_LANES

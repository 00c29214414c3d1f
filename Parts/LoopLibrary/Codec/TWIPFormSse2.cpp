#include "LoopLibrary/Codec/TWIPForms_x86.h"
#include "LoopLibrary/Codec/TWIPLanesSse2.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include <immintrin.h>

namespace {

// The processor's own count of zeros takes many steps on some processors, a look-up two.
constexpr auto kZeros = [] {
    std::array<uint8_t, 128> zeros{};
    for (size_t i = 0; i < zeros.size(); ++i) {
        zeros[i] = static_cast<uint8_t>(7 - std::bit_width(i));
    }
    return zeros;
}();

[[gnu::always_inline]] inline uint32_t CountZeros(uint64_t bits) {
    return kZeros[bits >> 57];
}

// In stereo the two channels' steps are worked out side by side, and a conversion, whose exponent
// is the wanted bit, has the fewest instructions. In mono nothing hides how long it takes, and the
// processor's count is sooner done.
template <int32_t kChannels>
[[gnu::always_inline]] inline uint32_t CountStepZeros(uint32_t step) {
    if constexpr (kChannels == 1) {
        return static_cast<uint32_t>(__builtin_clzll(uint64_t{step}));
    }
    constexpr uint64_t kExponentOfBit63 = 1023 + 63;
    const __m128d value = _mm_cvtsi32_sd(_mm_setzero_pd(), static_cast<int32_t>(step));
    const auto bits = static_cast<uint64_t>(_mm_cvtsi128_si64(_mm_castpd_si128(value)));
    return static_cast<uint32_t>(kExponentOfBit63 - (bits >> 52));
}

} // namespace

#define TWIP_FORM DecodeTWIPSse2
#define TWIP_TARGET
#include "LoopLibrary/Codec/TWIPVectorForm.inc"

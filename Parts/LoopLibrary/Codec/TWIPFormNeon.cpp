#include "LoopLibrary/Codec/TWIPForms_aarch64.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <arm_neon.h>

#define TWIP_LANES [[gnu::always_inline]] static inline

namespace {

// The processor has a count that takes one step, and 0 needs no case of its own.
TWIP_LANES uint32_t CountZeros(uint64_t bits) {
    return static_cast<uint32_t>(std::countl_zero(bits));
}

template <int32_t kChannels>
TWIP_LANES uint32_t CountStepZeros(uint32_t step) {
    return CountZeros(step);
}

using CLanes = uint32x4_t;
// 16 bits a lane.
using CLaneMask = uint64_t;
constexpr CLaneMask kLanesBelow[] = {0, 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFFFFFF, ~uint64_t{0}};

TWIP_LANES CLanes LoadLanes(const uint32_t* numbers) {
    return vld1q_u32(numbers);
}
TWIP_LANES CLanes LoadAlignedLanes(const uint32_t* numbers) {
    return vld1q_u32(numbers);
}
TWIP_LANES void StoreLanes(uint32_t* numbers, CLanes lanes) {
    vst1q_u32(numbers, lanes);
}
TWIP_LANES CLanes SpreadLanes(uint32_t value) {
    return vdupq_n_u32(value);
}
TWIP_LANES CLanes AddLanes(CLanes a, CLanes b) {
    return vaddq_u32(a, b);
}
TWIP_LANES CLanes SubtractLanes(CLanes a, CLanes b) {
    return vsubq_u32(a, b);
}
TWIP_LANES CLanes FlipLanes(CLanes a, CLanes b) {
    return veorq_u32(a, b);
}
TWIP_LANES CLanes GetSigns(CLanes a) {
    return vcltzq_s32(vreinterpretq_s32_u32(a));
}
TWIP_LANES CLanes DecayLanes(CLanes a) {
    return vshrq_n_u32(a, 5);
}
TWIP_LANES CLanes MoveUpOne(CLanes a) {
    return vextq_u32(vdupq_n_u32(0), a, 3);
}
TWIP_LANES CLanes MoveUpTwo(CLanes a) {
    return vextq_u32(vdupq_n_u32(0), a, 2);
}
TWIP_LANES bool AllEqual(CLanes a, uint32_t n, CLanes b, uint32_t m) {
    return vminvq_u32(vandq_u32(vceqq_u32(a, vdupq_n_u32(n)), vceqq_u32(b, vdupq_n_u32(m)))) != 0;
}
TWIP_LANES CLaneMask CompareLanes(CLanes a, CLanes b) {
    const uint32x4_t greater = vcgtq_s32(vreinterpretq_s32_u32(a), vreinterpretq_s32_u32(b));
    return vget_lane_u64(vreinterpret_u64_u16(vmovn_u32(greater)), 0);
}

// The compiler would branch on the carry.
TWIP_LANES void PickCode(uint64_t range, uint64_t& code, uint64_t longCode, uint64_t& behind,
                         uint64_t behindLong, uint32_t& count) {
    const uint32_t countShort = count - 64;
    const uint32_t countLong = count - 65;
    __asm__("cmn %[code], %[range]\n\t"
            "csel %[code], %[longCode], %[code], cs\n\t"
            "csel %[behind], %[behindLong], %[behind], cs\n\t"
            "csel %w[count], %w[countLong], %w[countShort], cs"
            : [code] "+r"(code), [behind] "+r"(behind), [count] "=r"(count)
            : [range] "r"(range), [longCode] "r"(longCode), [behindLong] "r"(behindLong),
              [countShort] "r"(countShort), [countLong] "r"(countLong)
            : "cc");
}

} // namespace

#undef TWIP_LANES

#define TWIP_PICK_CODE(...) PickCode(__VA_ARGS__);
#define TWIP_FORM DecodeTWIPNeon
#define TWIP_TARGET
#include "LoopLibrary/Codec/TWIPVectorForm.inc"

#include "LoopLibrary/Codec/TWIPForms_wasm.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <wasm_simd128.h>

#define TWIP_LANES [[gnu::always_inline]] static inline

namespace {

// One operation, and 0 needs no case of its own.
TWIP_LANES uint32_t CountZeros(uint64_t bits) {
    return static_cast<uint32_t>(std::countl_zero(bits));
}

template <int32_t kChannels>
TWIP_LANES uint32_t CountStepZeros(uint32_t step) {
    return CountZeros(step);
}

using CLanes = v128_t;
using CLaneMask = uint32_t;
constexpr CLaneMask kLanesBelow[] = {0, 1, 3, 7, 15};

TWIP_LANES CLanes LoadLanes(const uint32_t* numbers) {
    return wasm_v128_load(numbers);
}
TWIP_LANES CLanes LoadAlignedLanes(const uint32_t* numbers) {
    return wasm_v128_load(numbers);
}
TWIP_LANES void StoreLanes(uint32_t* numbers, CLanes lanes) {
    wasm_v128_store(numbers, lanes);
}
TWIP_LANES CLanes SpreadLanes(uint32_t value) {
    return wasm_u32x4_splat(value);
}
TWIP_LANES CLanes AddLanes(CLanes a, CLanes b) {
    return wasm_i32x4_add(a, b);
}
TWIP_LANES CLanes SubtractLanes(CLanes a, CLanes b) {
    return wasm_i32x4_sub(a, b);
}
TWIP_LANES CLanes FlipLanes(CLanes a, CLanes b) {
    return wasm_v128_xor(a, b);
}
TWIP_LANES CLanes GetSigns(CLanes a) {
    return wasm_i32x4_shr(a, 31);
}
TWIP_LANES CLanes DecayLanes(CLanes a) {
    return wasm_u32x4_shr(a, 5);
}
TWIP_LANES CLanes MoveUpOne(CLanes a) {
    return wasm_i32x4_shuffle(wasm_i32x4_const_splat(0), a, 0, 4, 5, 6);
}
TWIP_LANES CLanes MoveUpTwo(CLanes a) {
    return wasm_i32x4_shuffle(wasm_i32x4_const_splat(0), a, 0, 1, 4, 5);
}
TWIP_LANES bool AllEqual(CLanes a, uint32_t n, CLanes b, uint32_t m) {
    return wasm_i32x4_all_true(
        wasm_v128_and(wasm_i32x4_eq(a, SpreadLanes(n)), wasm_i32x4_eq(b, SpreadLanes(m))));
}
TWIP_LANES CLaneMask CompareLanes(CLanes a, CLanes b) {
    return wasm_i32x4_bitmask(wasm_i32x4_gt(a, b));
}

TWIP_LANES void PickCode(uint64_t range, uint64_t& code, uint64_t longCode, uint64_t& behind,
                         uint64_t behindLong, uint32_t& count) {
    const bool isLong = code + range < range;
    code = isLong ? longCode : code;
    behind = isLong ? behindLong : behind;
    count -= isLong ? 65 : 64;
}

} // namespace

#undef TWIP_LANES

#define TWIP_PICK_CODE(...) PickCode(__VA_ARGS__);
#define TWIP_FORM DecodeTWIPSimd128
#define TWIP_TARGET
#include "LoopLibrary/Codec/TWIPVectorForm.inc"

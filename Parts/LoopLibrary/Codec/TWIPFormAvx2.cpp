#include "LoopLibrary/Codec/TWIPForms_x86.h"
#include "LoopLibrary/Codec/TWIPLanesSse2.h"

#include <algorithm>
#include <cstring>

#include <immintrin.h>

// No vector is wider here; what gains are instructions with three operands, shifts by a register
// that leave the flags alone, and a count of zeros that takes one step.
#define TWIP_TARGET __attribute__((target("avx2,bmi,bmi2,lzcnt")))

namespace {

TWIP_TARGET __attribute__((always_inline)) inline uint32_t CountZeros(uint64_t bits) {
    return static_cast<uint32_t>(_lzcnt_u64(bits));
}

template <int32_t kChannels>
TWIP_TARGET __attribute__((always_inline)) inline uint32_t CountStepZeros(uint32_t step) {
    return static_cast<uint32_t>(_lzcnt_u64(step));
}

} // namespace

#define TWIP_FORM DecodeTWIPAvx2
#include "LoopLibrary/Codec/TWIPVectorForm.inc"

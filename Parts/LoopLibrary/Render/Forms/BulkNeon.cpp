#include "LoopLibrary/Render/Forms/BulkNeon.h"

#include "LoopLibrary/Render/Forms/PlainForms.h"

#include <algorithm>

#include <arm_neon.h>

namespace NSLOPDLL {

namespace {

// Rounds half away from zero and clips, like RoundToInteger. The half takes the value's sign by its
// bits: adding minus a half is subtracting it. What is not a number becomes 0 before the
// comparisons, which would pass it on.
int32x4_t RoundLanes(float32x4_t values, float scale, float least, float most) {
    const uint32x4_t sign = vandq_u32(vcltzq_f32(values), vdupq_n_u32(0x80000000));
    const float32x4_t half =
        vreinterpretq_f32_u32(vorrq_u32(sign, vreinterpretq_u32_f32(vdupq_n_f32(0.5F))));
    const float32x4_t rounded = vaddq_f32(vmulq_f32(values, vdupq_n_f32(scale)), half);
    const float32x4_t numbers = vreinterpretq_f32_u32(
        vandq_u32(vreinterpretq_u32_f32(rounded), vceqq_f32(rounded, rounded)));
    return vcvtq_s32_f32(vmaxq_f32(vminq_f32(numbers, vdupq_n_f32(most)), vdupq_n_f32(least)));
}

int16x4_t Round16(const float* values) {
    return vmovn_s32(RoundLanes(vld1q_f32(values), 32767.0F, -32768.0F, 32767.0F));
}

} // namespace

void ReadFloats16Neon(const int16_t* samples, int32_t count, float* values) noexcept {
    const float32x4_t scale = vdupq_n_f32(0x1p-15F);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const int16x8_t read = vld1q_s16(samples + i);
        const float32x4_t low = vcvtq_f32_s32(vmovl_s16(vget_low_s16(read)));
        const float32x4_t high = vcvtq_f32_s32(vmovl_high_s16(read));
        vst1q_f32(values + i, vmulq_f32(low, scale));
        vst1q_f32(values + i + 4, vmulq_f32(high, scale));
    }
    ReadFloats16Plain(samples + i, count - i, values + i);
}

void ReadFloats24Neon(const int32_t* samples, int32_t count, float* values) noexcept {
    const float32x4_t scale = vdupq_n_f32(0x1p-23F);
    int32_t i = 0;
    for (; i + 4 <= count; i += 4) {
        vst1q_f32(values + i, vmulq_f32(vcvtq_f32_s32(vld1q_s32(samples + i)), scale));
    }
    ReadFloats24Plain(samples + i, count - i, values + i);
}

void StoreFloats16Neon(const float* values, int32_t count, int16_t* samples) noexcept {
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        vst1q_s16(samples + i, vcombine_s16(Round16(values + i), Round16(values + i + 4)));
    }
    StoreFloats16Plain(values + i, count - i, samples + i);
}

void StoreFloats24Neon(const float* values, int32_t count, int32_t* samples) noexcept {
    int32_t i = 0;
    for (; i + 4 <= count; i += 4) {
        vst1q_s32(samples + i,
                  RoundLanes(vld1q_f32(values + i), 8388607.0F, -8388608.0F, 8388607.0F));
    }
    StoreFloats24Plain(values + i, count - i, samples + i);
}

// Bits 8 to 23 of each lane.
void Narrow24Neon(const int32_t* samples, int32_t count, int16_t* values) noexcept {
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        vst1q_s16(values + i, vcombine_s16(vshrn_n_s32(vld1q_s32(samples + i), 8),
                                           vshrn_n_s32(vld1q_s32(samples + i + 4), 8)));
    }
    Narrow24Plain(samples + i, count - i, values + i);
}

SPeaks FindPeaksNeon(const int16_t* values, int32_t count) noexcept {
    int16x8_t low = vdupq_n_s16(INT16_MAX);
    int16x8_t high = vdupq_n_s16(INT16_MIN);
    int32_t i = 0;
    for (; i + 8 <= count; i += 8) {
        const int16x8_t read = vld1q_s16(values + i);
        low = vminq_s16(low, read);
        high = vmaxq_s16(high, read);
    }
    const SPeaks rest = FindPeaksPlain(values + i, count - i);
    return {std::min(rest.fLow, vminvq_s16(low)), std::max(rest.fHigh, vmaxvq_s16(high))};
}

} // namespace NSLOPDLL

// Moves between the lanes of vectors that several NEON forms need.
#pragma once

#include <arm_neon.h>

namespace NSLOPDLL {

struct CFourRows {
    float32x4_t fRows[4];
};

/// Row i of the result holds lane i of each row.
inline CFourRows Transpose(float32x4_t a, float32x4_t b, float32x4_t c, float32x4_t d) {
    const float64x2_t ab02 = vreinterpretq_f64_f32(vtrn1q_f32(a, b));
    const float64x2_t ab13 = vreinterpretq_f64_f32(vtrn2q_f32(a, b));
    const float64x2_t cd02 = vreinterpretq_f64_f32(vtrn1q_f32(c, d));
    const float64x2_t cd13 = vreinterpretq_f64_f32(vtrn2q_f32(c, d));
    return {{vreinterpretq_f32_f64(vtrn1q_f64(ab02, cd02)),
             vreinterpretq_f32_f64(vtrn1q_f64(ab13, cd13)),
             vreinterpretq_f32_f64(vtrn2q_f64(ab02, cd02)),
             vreinterpretq_f32_f64(vtrn2q_f64(ab13, cd13))}};
}

} // namespace NSLOPDLL

// Four output frames in the lanes of a vector. NEON is in every 64-bit ARM processor. Its fused
// multiply-add rounds once instead of twice and is not used.

#include "LoopLibrary/Render/Common/LanesNeon.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"

namespace NSLOPDLL {

namespace {

constexpr int32_t kLanes = 4;
static_assert(kInterpolatedAtOnce % kLanes == 0);

// For each lane its taps in the order of the source frames, and its first source frame.
struct CLane {
    const float* fTaps;
    uint32_t fFrame;
};

float32x4_t FirstProducts(const CLane& lane, const float* fetch) {
    return vmulq_f32(vld1q_f32(lane.fTaps), vld1q_f32(fetch + lane.fFrame));
}

// Those of taps 4 and 5.
float32x2_t LastProducts(const CLane& lane, const float* fetch) {
    return vmul_f32(vld1_f32(lane.fTaps + 4), vld1_f32(fetch + lane.fFrame + 4));
}

float32x4_t SumTaps(const CLane* lanes, const float* fetch) {
    const CFourRows products =
        Transpose(FirstProducts(lanes[0], fetch), FirstProducts(lanes[1], fetch),
                  FirstProducts(lanes[2], fetch), FirstProducts(lanes[3], fetch));
    const float32x4_t last01 =
        vcombine_f32(LastProducts(lanes[0], fetch), LastProducts(lanes[1], fetch));
    const float32x4_t last23 =
        vcombine_f32(LastProducts(lanes[2], fetch), LastProducts(lanes[3], fetch));
    float32x4_t sum = vaddq_f32(products.fRows[0], products.fRows[1]);
    sum = vaddq_f32(sum, products.fRows[2]);
    sum = vaddq_f32(sum, products.fRows[3]);
    sum = vaddq_f32(sum, vuzp1q_f32(last01, last23));
    return vaddq_f32(sum, vuzp2q_f32(last01, last23));
}

void AddTo(float* output, float32x4_t values) {
    vst1q_f32(output, vaddq_f32(vld1q_f32(output), values));
}

// At a step of one frame a lane's source frames are those of the lane before it, moved on by one:
// four neighbours are one load a tap, and nothing has to be turned.
float32x4_t SumUnitTaps(const float32x4_t* taps, const float* fetch) {
    float32x4_t sum =
        vaddq_f32(vmulq_f32(taps[0], vld1q_f32(fetch)), vmulq_f32(taps[1], vld1q_f32(fetch + 1)));
    sum = vaddq_f32(sum, vmulq_f32(taps[2], vld1q_f32(fetch + 2)));
    sum = vaddq_f32(sum, vmulq_f32(taps[3], vld1q_f32(fetch + 3)));
    sum = vaddq_f32(sum, vmulq_f32(taps[4], vld1q_f32(fetch + 4)));
    return vaddq_f32(sum, vmulq_f32(taps[5], vld1q_f32(fetch + 5)));
}

void InterpolateUnitStep(const CInterpolationJob& job, const float* table) {
    const float* row = table + ((job.fPhase >> 6) & 255) * kPhaseStride;
    float32x4_t taps[kInterpolationTaps];
    for (size_t tap = 0; tap < kInterpolationTaps; ++tap) {
        taps[tap] = vdupq_n_f32(row[tap]);
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    const float* leftFetch = job.fLeftFetch + (job.fPhase >> 14);
    const float* rightFetch = job.fRightFetch + (job.fPhase >> 14);
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        const float32x4_t gains = vld1q_f32(job.fGains + i);
        const float32x4_t left = vmulq_f32(SumUnitTaps(taps, leftFetch + i), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : vmulq_f32(SumUnitTaps(taps, rightFetch + i), gains));
    }
}

} // namespace

void InterpolateNeon(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    if (job.fStep == kUnitStep) {
        InterpolateUnitStep(job, table);
        return;
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLanes) {
        CLane lanes[kLanes];
        for (CLane& lane : lanes) {
            lane = {table + ((phase >> 6) & 255) * kPhaseStride, phase >> 14};
            phase += job.fStep;
        }
        const float32x4_t gains = vld1q_f32(job.fGains + i);
        const float32x4_t left = vmulq_f32(SumTaps(lanes, job.fLeftFetch), gains);
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i,
              mono ? left : vmulq_f32(SumTaps(lanes, job.fRightFetch), gains));
    }
}

} // namespace NSLOPDLL

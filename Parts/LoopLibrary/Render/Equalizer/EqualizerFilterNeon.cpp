// The two channels and, where they run side by side, the two bands in the lanes of a vector. A
// chain of feedback is bound by latency, so that more lanes cost no more time. Fused operations,
// which round once instead of twice, are not used.

#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"

#include <arm_neon.h>

namespace NSLOPDLL {

namespace {

// Band 1 left, band 1 right, band 2 left, band 2 right.
float32x4_t Bands(float band1, float band2) {
    return vcombine_f32(vdup_n_f32(band1), vdup_n_f32(band2));
}

// Left and right.
float32x2_t LoadPair(const float& left, const float& right) {
    return vld1_lane_f32(&right, vdup_n_f32(left), 1);
}

void StorePair(float& left, float& right, float32x2_t values) {
    left = vget_lane_f32(values, 0);
    right = vget_lane_f32(values, 1);
}

float32x4_t LoadBands(const CEqualizerState& left, const CEqualizerState& right, int age) {
    return vcombine_f32(LoadPair(left.fBand1[age], right.fBand1[age]),
                        LoadPair(left.fBand2[age], right.fBand2[age]));
}

void StoreBands(CEqualizerState& left, CEqualizerState& right, int age, float32x4_t values) {
    StorePair(left.fBand1[age], right.fBand1[age], vget_low_f32(values));
    StorePair(left.fBand2[age], right.fBand2[age], vget_high_f32(values));
}

// input * gain + memory * a - older * b
float32x4_t Feedback(float32x4_t input, float32x4_t gain, float32x4_t memory, float32x4_t a,
                     float32x4_t older, float32x4_t b) {
    return vsubq_f32(vaddq_f32(vmulq_f32(input, gain), vmulq_f32(memory, a)), vmulq_f32(older, b));
}

float32x2_t Feedback(float32x2_t input, float32x2_t gain, float32x2_t memory, float32x2_t a,
                     float32x2_t older, float32x2_t b) {
    return vsub_f32(vadd_f32(vmul_f32(input, gain), vmul_f32(memory, a)), vmul_f32(older, b));
}

} // namespace

void FilterStereoNeon(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                      CEqualizerState& rightState, const CBlockBuffers& buffers) noexcept {
    const CEqualizerCoefficients& c = coefficients;
    const float32x4_t bandA = Bands(c.fBand1.fA, c.fBand2.fA);
    const float32x4_t bandB = Bands(c.fBand1.fB, c.fBand2.fB);
    const float32x4_t bandC = Bands(c.fBand1.fC, c.fBand2.fC);
    const float32x4_t bandGain = Bands(c.fBand1.fGain, c.fBand2.fGain);
    const float32x2_t lowA = vdup_n_f32(c.fLow.fA);
    const float32x2_t lowB = vdup_n_f32(c.fLow.fB);
    const float32x2_t lowGain = vdup_n_f32(c.fLow.fGain);
    const float32x2_t highA = vdup_n_f32(c.fHigh.fA);
    const float32x2_t highB = vdup_n_f32(c.fHigh.fB);
    const float32x2_t highGain = vdup_n_f32(c.fHigh.fGain);
    const float32x2_t offset = vdup_n_f32(1e-6F);
    const float32x2_t two = vdup_n_f32(2.0F);

    float32x2_t input1 = LoadPair(leftState.fInput[0], rightState.fInput[0]);
    float32x2_t input2 = LoadPair(leftState.fInput[1], rightState.fInput[1]);
    float32x4_t band1 = LoadBands(leftState, rightState, 0);
    float32x4_t band2 = LoadBands(leftState, rightState, 1);
    float32x2_t low1 = LoadPair(leftState.fLow[0], rightState.fLow[0]);
    float32x2_t low2 = LoadPair(leftState.fLow[1], rightState.fLow[1]);
    float32x2_t output1 = LoadPair(leftState.fOutput[0], rightState.fOutput[0]);
    float32x2_t output2 = LoadPair(leftState.fOutput[1], rightState.fOutput[1]);

    for (int32_t i = 0; i < kBlockFrames; ++i) {
        const float32x2_t input = LoadPair(buffers.fLeft[i], buffers.fRight[i]);
        const float32x2_t difference = vadd_f32(vsub_f32(input, input2), offset);
        const float32x4_t band =
            Feedback(vcombine_f32(difference, difference), bandA, band1, bandC, band2, bandB);
        const float32x4_t parts = vmulq_f32(band, bandGain);
        const float32x2_t equalized =
            vadd_f32(vadd_f32(vget_low_f32(parts), input), vget_high_f32(parts));
        const float32x2_t low = Feedback(equalized, lowGain, low1, lowA, low2, lowB);
        const float32x2_t high = vadd_f32(vsub_f32(low, vmul_f32(low1, two)), low2);
        const float32x2_t output = Feedback(high, highGain, output1, highA, output2, highB);
        input2 = input1;
        input1 = input;
        band2 = band1;
        band1 = band;
        low2 = low1;
        low1 = low;
        output2 = output1;
        output1 = output;
        StorePair(buffers.fLeft[i], buffers.fRight[i], output);
    }

    StorePair(leftState.fInput[0], rightState.fInput[0], input1);
    StorePair(leftState.fInput[1], rightState.fInput[1], input2);
    StoreBands(leftState, rightState, 0, band1);
    StoreBands(leftState, rightState, 1, band2);
    StorePair(leftState.fLow[0], rightState.fLow[0], low1);
    StorePair(leftState.fLow[1], rightState.fLow[1], low2);
    StorePair(leftState.fOutput[0], rightState.fOutput[0], output1);
    StorePair(leftState.fOutput[1], rightState.fOutput[1], output2);
}

} // namespace NSLOPDLL

// The two channels and, where they run side by side, the two bands in the lanes of a vector. A
// chain of feedback is bound by latency, so that more lanes cost no more time.

#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"

#include <emmintrin.h>

namespace NSLOPDLL {

namespace {

// Band 1 left, band 1 right, band 2 left, band 2 right.
__m128 Bands(float band1, float band2) {
    return _mm_setr_ps(band1, band1, band2, band2);
}

__m128 LoadBands(const CEqualizerState& left, const CEqualizerState& right, int age) {
    return _mm_setr_ps(left.fBand1[age], right.fBand1[age], left.fBand2[age], right.fBand2[age]);
}

void StoreBands(CEqualizerState& left, CEqualizerState& right, int age, __m128 values) {
    alignas(16) float lanes[4];
    _mm_store_ps(lanes, values);
    left.fBand1[age] = lanes[0];
    right.fBand1[age] = lanes[1];
    left.fBand2[age] = lanes[2];
    right.fBand2[age] = lanes[3];
}

// Left and right in the lower lanes.
__m128 LoadPair(float left, float right) {
    return _mm_setr_ps(left, right, 0.0F, 0.0F);
}

void StorePair(float& left, float& right, __m128 values) {
    left = _mm_cvtss_f32(values);
    right = _mm_cvtss_f32(_mm_shuffle_ps(values, values, 1));
}

// input * gain + memory * a - older * b
__m128 Feedback(__m128 input, __m128 gain, __m128 memory, __m128 a, __m128 older, __m128 b) {
    return _mm_sub_ps(_mm_add_ps(_mm_mul_ps(input, gain), _mm_mul_ps(memory, a)),
                      _mm_mul_ps(older, b));
}

} // namespace

void FilterStereoSse2(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                      CEqualizerState& rightState, const CBlockBuffers& buffers) noexcept {
    const CEqualizerCoefficients& c = coefficients;
    const __m128 bandA = Bands(c.fBand1.fA, c.fBand2.fA);
    const __m128 bandB = Bands(c.fBand1.fB, c.fBand2.fB);
    const __m128 bandC = Bands(c.fBand1.fC, c.fBand2.fC);
    const __m128 bandGain = Bands(c.fBand1.fGain, c.fBand2.fGain);
    const __m128 lowA = _mm_set1_ps(c.fLow.fA);
    const __m128 lowB = _mm_set1_ps(c.fLow.fB);
    const __m128 lowGain = _mm_set1_ps(c.fLow.fGain);
    const __m128 highA = _mm_set1_ps(c.fHigh.fA);
    const __m128 highB = _mm_set1_ps(c.fHigh.fB);
    const __m128 highGain = _mm_set1_ps(c.fHigh.fGain);
    const __m128 offset = _mm_set1_ps(1e-6F);
    const __m128 two = _mm_set1_ps(2.0F);

    __m128 input1 = LoadPair(leftState.fInput[0], rightState.fInput[0]);
    __m128 input2 = LoadPair(leftState.fInput[1], rightState.fInput[1]);
    __m128 band1 = LoadBands(leftState, rightState, 0);
    __m128 band2 = LoadBands(leftState, rightState, 1);
    __m128 low1 = LoadPair(leftState.fLow[0], rightState.fLow[0]);
    __m128 low2 = LoadPair(leftState.fLow[1], rightState.fLow[1]);
    __m128 output1 = LoadPair(leftState.fOutput[0], rightState.fOutput[0]);
    __m128 output2 = LoadPair(leftState.fOutput[1], rightState.fOutput[1]);

    for (int32_t i = 0; i < kBlockFrames; ++i) {
        const __m128 input = LoadPair(buffers.fLeft[i], buffers.fRight[i]);
        const __m128 difference = _mm_add_ps(_mm_sub_ps(input, input2), offset);
        const __m128 band =
            Feedback(_mm_movelh_ps(difference, difference), bandA, band1, bandC, band2, bandB);
        const __m128 parts = _mm_mul_ps(band, bandGain);
        const __m128 equalized = _mm_add_ps(_mm_add_ps(parts, input), _mm_movehl_ps(parts, parts));
        const __m128 low = Feedback(equalized, lowGain, low1, lowA, low2, lowB);
        const __m128 high = _mm_add_ps(_mm_sub_ps(low, _mm_mul_ps(low1, two)), low2);
        const __m128 output = Feedback(high, highGain, output1, highA, output2, highB);
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

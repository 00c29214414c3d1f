#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

namespace {

// Keeps the filters out of denormal numbers in silence.
constexpr float kOffset = 1e-6F;

void Push(float* memory, float value) {
    memory[1] = memory[0];
    memory[0] = value;
}

float FilterBand(const CEqualizerBand& band, float difference, float* memory) {
    const float output = difference * band.fA + memory[0] * band.fC - memory[1] * band.fB;
    Push(memory, output);
    return output;
}

} // namespace

void FilterChannel(const CEqualizerCoefficients& coefficients, CEqualizerState& state,
                   float* frames) noexcept {
    const CEqualizerCoefficients c = coefficients;
    CEqualizerState s = state;
    for (int32_t i = 0; i < kBlockFrames; ++i) {
        const float input = frames[i];
        const float difference = input - s.fInput[1] + kOffset;
        const float band1 = FilterBand(c.fBand1, difference, s.fBand1);
        const float band2 = FilterBand(c.fBand2, difference, s.fBand2);
        const float equalized = band1 * c.fBand1.fGain + input + band2 * c.fBand2.fGain;
        const float low = equalized * c.fLow.fGain + s.fLow[0] * c.fLow.fA - s.fLow[1] * c.fLow.fB;
        const float high = low - s.fLow[0] * 2.0F + s.fLow[1]; // two zeroes at DC
        const float output =
            high * c.fHigh.fGain + s.fOutput[0] * c.fHigh.fA - s.fOutput[1] * c.fHigh.fB;
        Push(s.fInput, input);
        Push(s.fLow, low);
        Push(s.fOutput, output);
        frames[i] = output;
    }
    state = s;
}

void FilterStereoPlain(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                       CEqualizerState& rightState, const CBlockBuffers& buffers) noexcept {
    FilterChannel(coefficients, leftState, buffers.fLeft);
    FilterChannel(coefficients, rightState, buffers.fRight);
}

} // namespace NSLOPDLL

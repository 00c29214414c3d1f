#include "LoopLibrary/Render/Equalizer/CEqualizerEffect.h"

#include "LoopLibrary/Render/Common/FloatMath.h"
#include "LoopLibrary/Render/Common/OutputRate.h"
#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace NSLOPDLL {

namespace {

// The highest frequency of the filters as a part of the rate: 20000 Hz at 44100.
constexpr float kTopPart = 0.45351472F;
constexpr float kGlide = 0.05F;
constexpr float kGlideRest = 0.95F;
static_assert(std::bit_cast<uint32_t>(kTopPart) == 0x3ee83315);
static_assert(std::bit_cast<uint32_t>(kGlide) == 0x3d4ccccd);
static_assert(std::bit_cast<uint32_t>(kGlideRest) == 0x3f733333);

constexpr float kPi = 3.1415927F;
constexpr float kTwoPi = 6.2831855F;

void Glide(float& value, float target) {
    value = target * kGlide + value * kGlideRest;
}

// The frequency that the filters may use, in Hz.
float ClipFrequency(float frequency, float rate) {
    return std::clamp(frequency, 0.0F, kTopPart * rate);
}

CEqualizerBand MakeBand(float frequency, float q, float gain, float rate) {
    const float w = ClipFrequency(frequency, rate) * kTwoPi / rate;
    float sharpness = q / 1000.0F;
    const float decibels = gain / 1000.0F;
    if (decibels < -1.0F) {
        sharpness *= -2.0F / decibels; // a cut narrows the filter
    }
    const double amplitude = ::pow(10.0, static_cast<double>(decibels) / 20.0);
    const float t = (sharpness - w * 0.5F) / (sharpness * 2.0F + w);
    CEqualizerBand band;
    band.fA = 0.5F - t;
    band.fB = t * 2.0F;
    band.fC = FloatCos(w) * (t + 0.5F) * 2.0F;
    // The band never vanishes: at 0 dB about a millionth of it stays.
    band.fGain = static_cast<float>(amplitude - 0.9999989867210388);
    return band;
}

// The middle coefficient of a pole pair of `radius` at `angle`.
float PoleCoefficient(float radius, float angle) {
    return static_cast<float>(static_cast<double>(radius) *
                              (::cos(static_cast<double>(angle) * 2.0) * 2.0));
}

// The gain is a plain cosine, no normalization.
CEqualizerCut MakeLowCut(float frequency, float rate) {
    const float angle = ClipFrequency(frequency, rate) / rate * kPi;
    CEqualizerCut cut;
    cut.fA = PoleCoefficient(FloatExp(angle / -0.707F), angle);
    cut.fB = static_cast<float>(::exp(static_cast<double>(angle) * -2.0 / 0.7070000171661377));
    cut.fGain = FloatCos(angle);
    return cut;
}

// Unlike the low cut's, the pole radius depends on the frequency.
CEqualizerCut MakeHighCut(float frequency, float rate) {
    const float part = ClipFrequency(frequency, rate) / rate;
    const float width = 0.6F - part;
    const float angle = part * kPi;
    CEqualizerCut cut;
    cut.fA = PoleCoefficient(FloatExp(-(angle / width)), angle);
    cut.fB =
        static_cast<float>(::exp(static_cast<double>(angle) * -2.0 / static_cast<double>(width)));
    cut.fGain = static_cast<float>(1.0 - static_cast<double>(cut.fA) + static_cast<double>(cut.fB));
    return cut;
}

} // namespace

CEqualizerEffect::CEqualizerEffect(int32_t rate) noexcept : fSampleRate(ClipOutputRate(rate)) {}

CEqualizerEffect::CEqualizerEffect(const CEqualizerEffect& other) noexcept
    : fEnabled(other.fEnabled), fRun(other.fRun), fSampleRate(other.fSampleRate),
      fParameters(other.fParameters), fTargets(other.fTargets), fCoefficients(other.fCoefficients) {
}

CEqualizerEffect::~CEqualizerEffect() = default;

void CEqualizerEffect::SetSampleRate(int32_t rate) noexcept {
    fSampleRate = ClipOutputRate(rate);
    fAreCoefficientsStale = true;
}

void CEqualizerEffect::Reset() noexcept {
    fCoefficients = {};
    fLeftState = {};
    fRightState = {};
    fParameters = fTargets;
    fAreCoefficientsStale = true;
}

void CEqualizerEffect::Process(const CBlockBuffers& buffers) noexcept {
    const bool run = fEnabled && fRun;
    if (run != fWasRunning) {
        fWasRunning = run;
        Reset();
    }
    GlideParameters();
    if (run) {
        UpdateCoefficients();
        GetRenderForm().fFilterStereo(fCoefficients, fLeftState, fRightState, buffers);
        RecoverFromOverflow(buffers);
    }
}

// At rates from about 500 kHz on the poles of the low cut, in floats, can lie on the unit circle or
// outside, so that the memories of a valid loop grow without end. Not-a-number would stay for good.
void CEqualizerEffect::RecoverFromOverflow(const CBlockBuffers& buffers) noexcept {
    if (!fLeftState.IsFinite() || !fRightState.IsFinite()) {
        fLeftState = {};
        fRightState = {};
        std::fill_n(buffers.fLeft, kBlockFrames, 0.0F);
        std::fill_n(buffers.fRight, kBlockFrames, 0.0F);
    }
}

void CEqualizerEffect::GlideParameters() noexcept {
    CEqualizerParameters& now = fParameters;
    const CEqualizerParameters before = now;
    Glide(now.fLowCut, fTargets.fLowCut);
    Glide(now.fBand1Frequency, fTargets.fBand1Frequency);
    Glide(now.fBand1Q, fTargets.fBand1Q);
    Glide(now.fBand1Gain, fTargets.fBand1Gain);
    Glide(now.fBand2Frequency, fTargets.fBand2Frequency);
    Glide(now.fBand2Q, fTargets.fBand2Q);
    Glide(now.fBand2Gain, fTargets.fBand2Gain);
    Glide(now.fHighCut, fTargets.fHighCut);
    fAreCoefficientsStale = fAreCoefficientsStale || now != before;
}

// Of a dozen calls of mathematical functions, which take longer than the filters. They depend on
// the parameters and the rate alone, and a glide comes to rest after a few hundred blocks.
void CEqualizerEffect::UpdateCoefficients() noexcept {
    if (!fAreCoefficientsStale) {
        return;
    }
    const CEqualizerParameters& now = fParameters;
    const auto rate = static_cast<float>(fSampleRate);
    fCoefficients.fBand1 = MakeBand(now.fBand1Frequency, now.fBand1Q, now.fBand1Gain, rate);
    fCoefficients.fBand2 = MakeBand(now.fBand2Frequency, now.fBand2Q, now.fBand2Gain, rate);
    fCoefficients.fLow = MakeLowCut(now.fLowCut, rate);
    fCoefficients.fHigh = MakeHighCut(now.fHighCut, rate);
    fAreCoefficientsStale = false;
}

} // namespace NSLOPDLL

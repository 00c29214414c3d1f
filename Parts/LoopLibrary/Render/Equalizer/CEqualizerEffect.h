#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// The parameters of the equalizer. The comments name the ranges that loaders clip to.
struct CEqualizerParameters {
    float fLowCut = 15.0F;           // Hz, 15 to 12000
    float fBand1Frequency = 100.0F;  // Hz, 20 to 3000
    float fBand1Q = 1000.0F;         // thousandths, 500 to 10000
    float fBand1Gain = 0.0F;         // thousandths of a decibel, -18000 to 18000
    float fBand2Frequency = 2500.0F; // Hz, 1500 to 16000
    float fBand2Q = 1000.0F;
    float fBand2Gain = 0.0F;
    float fHighCut = 20000.0F; // Hz, 100 to 20000

    bool operator==(const CEqualizerParameters&) const = default;
};

/// The one effect behind the sampler: two parametric bands, a low cut and a high cut, in place on
/// blocks of 64 frames. Every parameter glides toward its target by 5 percent a block, also while
/// the equalizer is off. Takes no lock; everything but the construction may run on the render
/// thread, one operation at a time.
class CEqualizerEffect {
public:
    explicit CEqualizerEffect(int32_t rate) noexcept;
    /// The same settings and parameters with cleared filters.
    CEqualizerEffect(const CEqualizerEffect& other) noexcept;
    CEqualizerEffect& operator=(const CEqualizerEffect&) = delete;
    virtual ~CEqualizerEffect();

    /// The filters run while both switches are on: the loop file's and the sequencer's.
    void SetEnabled(bool enabled) noexcept { fEnabled = enabled; }
    void SetRunFlag(bool run) noexcept LOOP_REALTIME { fRun = run; }
    /// Clipped to 11025 to 1000000.
    void SetSampleRate(int32_t rate) noexcept LOOP_REALTIME;
    bool IsEnabled() const noexcept { return fEnabled; }
    bool GetRunFlag() const noexcept { return fRun; }
    int32_t GetSampleRate() const noexcept { return fSampleRate; }

    /// Each stores a target, in the unit of CEqualizerParameters.
    void SetLowCut(int16_t value) noexcept { fTargets.fLowCut = static_cast<float>(value); }
    void SetBand1Frequency(int16_t value) noexcept {
        fTargets.fBand1Frequency = static_cast<float>(value);
    }
    void SetBand1Gain(int16_t value) noexcept { fTargets.fBand1Gain = static_cast<float>(value); }
    void SetBand1Q(int16_t value) noexcept { fTargets.fBand1Q = static_cast<float>(value); }
    void SetBand2Frequency(int16_t value) noexcept {
        fTargets.fBand2Frequency = static_cast<float>(value);
    }
    void SetBand2Gain(int16_t value) noexcept { fTargets.fBand2Gain = static_cast<float>(value); }
    void SetBand2Q(int16_t value) noexcept { fTargets.fBand2Q = static_cast<float>(value); }
    void SetHighCut(int16_t value) noexcept { fTargets.fHighCut = static_cast<float>(value); }
    const CEqualizerParameters& GetTargets() const noexcept { return fTargets; }
    /// Where the glide toward the targets stands.
    const CEqualizerParameters& GetParameters() const noexcept { return fParameters; }
    /// Of the last block that was filtered.
    const CEqualizerCoefficients& GetCoefficients() const noexcept { return fCoefficients; }

    /// Clears coefficients and filter memories and jumps every parameter to its target.
    void Reset() noexcept LOOP_REALTIME;

    /// Works on 64 frames of both arrays; leaves them untouched while a switch is off. A change of
    /// the switches resets first. Where a filter memory is no longer finite at the end, both
    /// channels start from cleared memories again and the block is silent.
    void Process(const CBlockBuffers& buffers) noexcept LOOP_REALTIME;

private:
    void GlideParameters() noexcept LOOP_REALTIME;
    void UpdateCoefficients() noexcept LOOP_REALTIME;
    void RecoverFromOverflow(const CBlockBuffers& buffers) noexcept LOOP_REALTIME;

    bool fEnabled = false;
    bool fRun = false;
    int32_t fSampleRate;
    CEqualizerParameters fParameters;
    CEqualizerParameters fTargets;
    CEqualizerCoefficients fCoefficients;
    bool fAreCoefficientsStale = true;
    CEqualizerState fLeftState;
    CEqualizerState fRightState;
    bool fWasRunning = false;
};

} // namespace NSLOPDLL

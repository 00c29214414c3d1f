#pragma once

#include <algorithm>
#include <cstdint>

namespace NSLOPDLL {

/// The values that a setting may have, ends included.
struct SRange {
    int32_t fLeast;
    int32_t fGreatest;

    constexpr bool Holds(int64_t value) const noexcept {
        return value >= fLeast && value <= fGreatest;
    }
    constexpr int32_t Clip(int32_t value) const noexcept {
        return std::clamp(value, fLeast, fGreatest);
    }
    /// For ranges within 16 bits.
    constexpr int16_t Clip16(int32_t value) const noexcept {
        return static_cast<int16_t>(Clip(value));
    }
};

constexpr SRange kTempoRange{20000, 450000}; // thousandths of a beat per minute
constexpr SRange kBarsRange{0, 999};
constexpr SRange kBeatsRange{0, 7};
constexpr SRange kSignaturePartRange{1, 15}; // either part of a time signature
constexpr SRange kSensitivityRange{0, 99};
constexpr SRange kGateLevelRange{0, 999};
constexpr SRange kGainRange{0, 7943};          // thousandths of unity
constexpr SRange kTransposeRange{-2400, 2400}; // cents

// Transient shaper and compressor. Times are indices into the envelope tables, of which a file may
// store any and the devices take fewer.
constexpr SRange kEnvelopeIndexRange{0, 1023};
constexpr SRange kStretchRange{0, 100};         // percent
constexpr SRange kCompressorLevelRange{0, 127}; // threshold and ratio
constexpr SRange kAttackRange{0, 520};
constexpr SRange kShaperDecayRange{58, 749};
constexpr SRange kCompressorReleaseRange{134, 666};
/// In the place of a decay: none.
constexpr int16_t kNoDecay = 1023;

// Equalizer: Hz, thousandths of a decibel, thousandths.
constexpr SRange kLowCutRange{15, 12000};
constexpr SRange kBand1FrequencyRange{20, 3000};
constexpr SRange kBand2FrequencyRange{1500, 16000};
constexpr SRange kHighCutRange{100, 20000};
constexpr SRange kBandGainRange{-18000, 18000};
constexpr SRange kBandQRange{500, 10000};

/// Frames per second of the audio in a LOP2 file; see OutputRate.h for what is rendered.
constexpr SRange kStoredRateRange{1000, 1000000};

/// Musical positions are counted in these.
constexpr int32_t kPulsesPerQuarter = 15360;

} // namespace NSLOPDLL

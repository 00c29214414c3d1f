#pragma once

#include "Support/Threads/RealTime.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace NSLOPDLL {

/// Envelope settings are indices into the rate-dependent tables, 0 to 1023.
constexpr int32_t kEnvelopeTableSize = 1024;

constexpr size_t kInterpolationTaps = 6;
constexpr size_t kInterpolationPhases = 256;
/// Floats from one phase to the next in the table by phase: six taps and two zeroes.
constexpr size_t kPhaseStride = 8;

/// Indices of the pitch table are cents; this one is unity.
constexpr int32_t kPitchTableSize = 19200;
constexpr int32_t kPitchTableUnity = 12900;

/// The tables of one output rate and, without an instance, the two that all rates share. Constant
/// once built; any thread reads them.
class CDSPTables {
public:
    /// Raises std::bad_alloc. Loops share instances through CDSPTablesCache.
    explicit CDSPTables(int32_t sampleRate);
    CDSPTables(const CDSPTables&) = delete;
    CDSPTables& operator=(const CDSPTables&) = delete;
    virtual ~CDSPTables();

    int32_t GetSampleRate() const noexcept LOOP_REALTIME { return fSampleRate; }

    /// Rise of an envelope per block of 64 frames.
    const float* GetAttackRates() const noexcept LOOP_REALTIME { return fAttackRates.get(); }
    /// Milliseconds of each index: the same at all rates.
    const float* GetTimes() const noexcept { return fTimes.get(); }
    /// Factor on an envelope per block of 64 frames: a quarter after the index's time. The last one
    /// is exactly 1.0.
    const float* GetDecayFactors() const noexcept LOOP_REALTIME { return fDecayFactors.get(); }

    /// The windowed-sinc kernel: six rows of 256, element row * 256 + phase. The taps of a phase
    /// add up to 1.
    static const float* GetInterpolationTable() noexcept LOOP_REALTIME;
    /// The same kernel phase by phase, for vector loads: element phase * kPhaseStride + j is row
    /// 5 - j, so that j runs with the source frames.
    static const float* GetInterpolationTableByPhase() noexcept LOOP_REALTIME;
    /// Steps through the source in 14 bits of fraction.
    static const uint32_t* GetPitchTable() noexcept LOOP_REALTIME;

private:
    friend class CDSPTablesCache;

    int32_t fRefCount = 0;
    const int32_t fSampleRate;
    std::unique_ptr<float[]> fAttackRates;
    std::unique_ptr<float[]> fTimes;
    std::unique_ptr<float[]> fDecayFactors;
};

} // namespace NSLOPDLL

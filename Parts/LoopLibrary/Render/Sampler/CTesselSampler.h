#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Common/OutputRate.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sampler/CSamplerSettings.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Sampler/SamplerVoice.h"
#include "LoopLibrary/Render/Sampler/VoiceEnvelopes.h"
#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "LoopLibrary/Render/Tables/CDSPTablesHandle.h"
#include "Support/Threads/RealTime.h"

#include <array>
#include <cstdint>

namespace NSLOPDLL {

/// The voice engine: turns ranges of a wave sample into blocks of 64 frames at an output rate. Of
/// the eight voices the newest one is the current voice; starting another releases it. The point
/// that a voice reads lies two frames behind the one it has fetched first, so that a slice's first
/// two frames are heard only through the kernel's side taps.
///
/// Takes no lock: the owner keeps the render thread (RenderBlock, the start and stop operations)
/// and changes apart. What is noexcept is safe on the render thread. GetRenderLength may run beside
/// anything but a setter.
class CTesselSampler {
public:
    /// Borrows `sample`. The rate is clipped to 11025 to 1000000. Raises std::bad_alloc.
    CTesselSampler(const CABCWaveSample* sample, int32_t outputRate);
    /// The same sample, settings and rate with free voices.
    CTesselSampler(const CTesselSampler& other);
    CTesselSampler& operator=(const CTesselSampler&) = delete;
    virtual ~CTesselSampler();

    /// Clips the rate and takes its tables; voices that sound keep their pitch ratio. Not on the
    /// render thread. On std::bad_alloc the old rate stands.
    void SetOutputRate(int32_t rate);
    int32_t GetOutputRate() const noexcept LOOP_REALTIME { return fTables->GetSampleRate(); }
    /// The render thread's way to a new rate: takes `tables` and leaves those used so far in it.
    void SwapTables(CDSPTablesHandle& tables) noexcept LOOP_REALTIME { fTables.Swap(tables); }

    /// Each stores its field and acts from the next block on.
    void SetTranspose(int16_t cents) noexcept { fSettings.fTranspose = cents; }
    void SetGain(int16_t level) noexcept { fSettings.fGain = static_cast<float>(level); }
    void SetShaperOn(bool on) noexcept { fSettings.fShaperOn = on; }
    void SetShaperAttack(int16_t index) noexcept { fSettings.fShaperAttack = index; }
    void SetShaperDecay(int16_t index) noexcept { fSettings.fShaperDecay = index; }
    void SetShaperStretch(int16_t percent) noexcept { fSettings.fShaperStretch = percent; }
    void SetCompressorOn(bool on) noexcept { fSettings.fCompressorOn = on; }
    void SetCompressorThreshold(int16_t value) noexcept { fSettings.fCompressorThreshold = value; }
    void SetCompressorRatio(int16_t value) noexcept { fSettings.fCompressorRatio = value; }
    void SetCompressorAttack(int16_t index) noexcept { fSettings.fCompressorAttack = index; }
    void SetCompressorRelease(int16_t index) noexcept { fSettings.fCompressorRelease = index; }
    const CSamplerSettings& GetSettings() const noexcept { return fSettings; }

    /// Each releases all voices and starts the next one. Ranges lie inside the sample.
    void StartRange(const CSlicePlayRange& range) noexcept LOOP_REALTIME;
    /// A plain voice, once over the range.
    void StartFreeRange(int32_t start, int32_t end) noexcept LOOP_REALTIME;
    /// A plain voice from `frame` on, round the loop range, or round the whole sample when `frame`
    /// lies behind it.
    void StartFreeRun(int32_t frame) noexcept LOOP_REALTIME;

    void ReleaseAllVoices() noexcept LOOP_REALTIME;
    /// Plain voices that go round play on to the end of their range and stop.
    void EndFreeLoops() noexcept LOOP_REALTIME;
    /// All voices off at once.
    void ResetVoices() noexcept LOOP_REALTIME;

    bool IsCurrentVoiceIdle() const noexcept LOOP_REALTIME;
    int32_t GetCurrentVoicePosition() const noexcept LOOP_REALTIME;
    bool IsCurrentVoiceInTail() const noexcept LOOP_REALTIME;
    /// For tests and meters. `index` is 0 to 7.
    const SamplerVoice& GetVoice(size_t index) const noexcept { return fVoices[index]; }

    /// Output frames that `range` would sound with the present settings: 1 to 2^31 - 1.
    int32_t GetRenderLength(const CSlicePlayRange& range) const noexcept;

    /// Overwrites 64 frames of both arrays with the sum of the voices, unclipped.
    void RenderBlock(const CBlockBuffers& buffers) noexcept LOOP_REALTIME;

private:
    static constexpr uint16_t kVoiceCount = 8;

    SamplerVoice& TakeNextVoice() noexcept LOOP_REALTIME;
    SamplerVoice MakeSliceVoice(const CSlicePlayRange& range) const noexcept LOOP_REALTIME;
    SamplerVoice MakePlainVoice(int32_t frame) const noexcept LOOP_REALTIME;
    void PickFreeRunRange(SamplerVoice& voice) const noexcept LOOP_REALTIME;
    float RateRatio() const noexcept LOOP_REALTIME;
    uint32_t SliceStep(const SamplerVoice& voice) const noexcept LOOP_REALTIME;
    /// Each moves the envelopes on by a block, or switches the voice off when it has died away.
    CGainMove StepSliceVoice(SamplerVoice& voice) const noexcept LOOP_REALTIME;
    CGainMove StepPlainVoice(SamplerVoice& voice) const noexcept LOOP_REALTIME;
    void RenderVoice(SamplerVoice& voice, const float* gains,
                     const CBlockBuffers& buffers) noexcept LOOP_REALTIME;
    /// At steps whose block is more than one fetch gets.
    void RenderInParts(SamplerVoice& voice, const CInterpolationJob& block, float* left,
                       float* right) noexcept LOOP_REALTIME;
    /// Moves the phase on by a block; answers the source frames that it passes.
    static int32_t AdvancePhase(SamplerVoice& voice, uint32_t step) noexcept LOOP_REALTIME;

    uint16_t fCurrentVoice = 0;
    const CABCWaveSample* fSample;
    CSamplerSettings fSettings;
    CDSPTablesHandle fTables;
    std::array<SamplerVoice, kVoiceCount> fVoices;
};

} // namespace NSLOPDLL

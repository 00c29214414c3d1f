#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sequencer/LoopTempo.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

int32_t ClippedRate(const CABCWaveSample& sample) noexcept {
    return static_cast<int32_t>(
        std::clamp<uint32_t>(sample.GetSampleRate(), kOutputRate_Minimum, kOutputRate_Maximum));
}

} // namespace

CTesselSequencer::CTesselSequencer(CABCWaveSample* waveSample)
    : fWaveSample(waveSample), fSampler(waveSample, ClippedRate(*waveSample)),
      fEqualizer(ClippedRate(*waveSample)), fOutputRate(ClippedRate(*waveSample)) {
    const int32_t loopTempo = GetLoopTempo();
    if (loopTempo != 0) {
        fTempo = kTempoRange.Clip(loopTempo);
    }
}

CTesselSequencer::CTesselSequencer(const CTesselSequencer& other)
    : fWaveSample(other.fWaveSample), fSliceSequence(other.fSliceSequence),
      fSampler(other.fSampler), fEqualizer(other.fEqualizer),
      fOutputRate(fSampler.GetOutputRate()) {
    int32_t outputRate = 0;
    {
        const NSSupport::CMutexLock stateLock(other.fStateMutex);
        const NSSupport::CMutexLock tableLock(other.fTableMutex);
        fDropMuted = other.fDropMuted.load();
        fTempo = other.fTempo.load();
        fTimeSignatureNumerator = other.fTimeSignatureNumerator.load();
        fTimeSignatureDenominator = other.fTimeSignatureDenominator.load();
        fBars = other.fBars.load();
        fBeats = other.fBeats.load();
        fTempoSync = other.fTempoSync.load();
        outputRate = other.fOutputRate;
        if (other.fSliceTable != nullptr) {
            fSliceTable = std::make_unique<SliceTable>(*other.fSliceTable);
        }
    }
    // The other's sampler has not taken over a rate that still waits for a render.
    if (outputRate != fOutputRate) {
        SetOutputRate(outputRate);
        ApplyOutputRate();
    }
    ResetPosition();
}

void CTesselSequencer::SetTempo(int32_t tempo) {
    Change([&] { fTempo = tempo; });
}

void CTesselSequencer::SetTimeSignature(int32_t numerator, int32_t denominator) {
    Change([&] {
        fTimeSignatureNumerator = numerator;
        fTimeSignatureDenominator = denominator;
    });
}

void CTesselSequencer::SetBars(int32_t bars) {
    Change([&] { fBars = bars; });
}

void CTesselSequencer::SetBeats(int32_t beats) {
    Change([&] { fBeats = beats; });
}

void CTesselSequencer::SetDropMuted(bool dropMuted) {
    Change([&] { fDropMuted = dropMuted; });
}

void CTesselSequencer::SetTempoSync(bool tempoSync) {
    Change([&] { fTempoSync = tempoSync; });
}

void CTesselSequencer::SetLoopRange(int32_t start, int32_t end) {
    Change([&] { fWaveSample->SetLoop(kSampleLoopMode_Forward, start, end); });
}

int32_t CTesselSequencer::GetLoopTempo() const noexcept {
    const int64_t beats = int64_t{fBars} * fTimeSignatureNumerator + fBeats;
    return LoopTempo(int64_t{fWaveSample->GetLoopEnd()} - fWaveSample->GetLoopStart(),
                     static_cast<uint32_t>(GetSourceRate()), beats);
}

bool CTesselSequencer::IsTempoSynced() const noexcept {
    return fTempoSync && (fBars != 0 || fBeats != 0);
}

int32_t CTesselSequencer::GetSourceRate() const noexcept {
    return ClippedRate(*fWaveSample);
}

int32_t CTesselSequencer::FramesToOutput(int32_t frames) const noexcept {
    return ClockSettings(fOutputRate).OutputTime(frames);
}

CClockSettings CTesselSequencer::ClockSettings(int32_t outputRate) const noexcept {
    CClockSettings settings;
    settings.fTempo = fTempo;
    settings.fLoopTempo = GetLoopTempo();
    settings.fIsSynced = IsTempoSynced();
    settings.fSourceRate = GetSourceRate();
    settings.fOutputRate = outputRate;
    settings.fLoopStart = fWaveSample->GetLoopStart();
    settings.fLoopEnd = fWaveSample->GetLoopEnd();
    settings.fFrameCount = fWaveSample->GetFrameCount();
    return settings;
}

int32_t CTesselSequencer::GetRenderLength(const CSlicePlayRange& range) const noexcept {
    return fSampler.GetRenderLength(range);
}

} // namespace NSLOPDLL

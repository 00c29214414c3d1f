#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Equalizer/CEqualizerEffect.h"
#include "LoopLibrary/Render/Sampler/CTesselSampler.h"
#include "LoopLibrary/Render/Sequencer/CClockSettings.h"
#include "LoopLibrary/Render/Sequencer/CSequencerPlayFields.h"
#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "LoopLibrary/Render/Slices/CSliceTableLookup.h"
#include "LoopLibrary/Render/Tables/CDSPTablesHandle.h"
#include "Support/Threads/CPlatformMutex.h"
#include "Support/Threads/RealTime.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace NSLOPDLL {

class CABCWaveSample;
class CSliceSequence;

/// Plays a loop at a tempo other than its own: it triggers the ranges of its slice table one after
/// the other at times worked out from the tempo, and leaves gaps and overlaps to the sampler. Audio
/// comes in blocks of 64 frames, and a trigger stands at the head of a block.
///
/// Tempos are in thousandths of a beat per minute; a beat is one unit of the time signature. Source
/// frames count the wave sample, output frames the sound at the output rate.
///
/// Threads. Calls of the control side may come from any number of threads and wait for each other.
/// One render thread calls Render, which waits for nothing: where a control call is in its way it
/// plays on with the old state for a block. Calls under "Alone" need a sequencer that no thread
/// renders meanwhile. Where both mutexes are held, the state mutex was taken first.
class CTesselSequencer {
public:
    /// Borrows the sample for the sequencer's life. Starts at the sample's own rate, without
    /// slices.
    explicit CTesselSequencer(CABCWaveSample* waveSample);
    /// A second player of the same sample and slices with the other's sound and settings and a
    /// slice table of its own, at rest on the loop start. The other must not be rendering.
    CTesselSequencer(const CTesselSequencer& other);
    CTesselSequencer& operator=(const CTesselSequencer&) = delete;
    virtual ~CTesselSequencer() = default;

    // -- Settings: control side. Values are stored unchecked; the tempo must be above 0. --

    /// Acts at the next block, on the trigger already planned too.
    void SetTempo(int32_t tempo);
    void SetTimeSignature(int32_t numerator, int32_t denominator);
    void SetBars(int32_t bars);
    void SetBeats(int32_t beats);
    /// Whether muted slices make no play range. Takes RebuildSliceTable to be heard.
    void SetDropMuted(bool dropMuted);
    /// Following the tempo or running free; a running loop changes over at a trigger.
    void SetTempoSync(bool tempoSync);
    /// Moves the wave sample's loop range, which whoever shares the sample sees too. Free voices
    /// and the questions below read it outside the mutex: not beside either on another thread.
    void SetLoopRange(int32_t start, int32_t end);

    // -- Questions: any thread, never waiting. --

    int32_t GetTempo() const noexcept { return fTempo; }
    int32_t GetTimeSignatureNumerator() const noexcept { return fTimeSignatureNumerator; }
    int32_t GetTimeSignatureDenominator() const noexcept { return fTimeSignatureDenominator; }
    int32_t GetBars() const noexcept { return fBars; }
    int32_t GetBeats() const noexcept { return fBeats; }
    bool GetDropMuted() const noexcept { return fDropMuted; }
    /// The tempo at which the loop lasts as long as its source frames; 0 for a loop of no length.
    int32_t GetLoopTempo() const noexcept LOOP_REALTIME;
    /// Sync is switched on and the loop has a length in bars or beats.
    bool IsTempoSynced() const noexcept LOOP_REALTIME;
    const CABCWaveSample& GetWaveSample() const noexcept { return *fWaveSample; }
    /// The wave sample's rate within 11025 to 1000000.
    int32_t GetSourceRate() const noexcept LOOP_REALTIME;
    /// The rate set last, although the render side takes it over only at its next call.
    int32_t GetOutputRate() const noexcept { return fOutputRate; }
    /// Output frames that a distance in the source lasts, at the playing tempo if synced.
    int32_t FramesToOutput(int32_t frames) const noexcept;
    /// Output frames that a range sounds for, at the rate that the render side took over last. Not
    /// beside a change of that rate or of the sampler's settings.
    int32_t GetRenderLength(const CSlicePlayRange& range) const noexcept;

    // -- Output rate: control side. --

    /// Clips `rate` to 11025 to 1000000. Raises std::bad_alloc and has then changed nothing. Render
    /// takes the new rate over at its next call, before any command.
    void SetOutputRate(int32_t rate);
    /// The second step of SetOutputRate, which cannot fail: the first is to get the tables. For an
    /// owner of several sequencers that are to change all or none.
    void CommitOutputRate(CDSPTablesHandle tables);

    // -- Slice table: control side. --

    /// Borrows the sequence for the sequencer's life and builds the table.
    void SetSliceSequence(CSliceSequence* sequence);
    /// From the slices as they are now. Without a sequence nothing happens.
    void RebuildSliceTable();
    /// `table` is sorted by fStart and lies within the wave sample.
    void SetSliceTable(std::unique_ptr<std::vector<CSlicePlayRange>> table);
    /// Raises std::out_of_range for an index beyond the table.
    CSlicePlayRange GetSlicePlayRange(uint32_t index) const;
    uint32_t GetSliceCount() const;
    bool HasSlices() const;

    // -- Playing: control side. Without slices these do nothing but RequestStop. --

    /// Lets the next Start begin at the loop start.
    void ResetPosition();
    /// The same for a sequencer at rest or about to stop, never behind the loop end where the table
    /// has another choice.
    void MoveToLoopStart();
    /// Begins at the next Render. Does nothing while the triggers go on, so that a stop which no
    /// Render has taken yet stands.
    void Start();
    /// Plays a table entry once; a running loop ends with it. Raises like GetSlicePlayRange.
    void StartOneShot(uint32_t index);
    /// Lets the voices fade from the next Render on.
    void RequestStop();
    CSequencerPlayFields GetPlayFields() const;

    // -- Rendering: the render thread. --

    /// Fills `frameCount` frames of both buffers. Any split of a run into calls gives the same
    /// samples; commands are taken at the head of a call.
    void Render(const CBlockBuffers& buffers, int32_t frameCount) noexcept LOOP_REALTIME;

    // -- Alone --

    /// The sound of 64 frames with neither commands nor triggers.
    void RenderBlock(const CBlockBuffers& buffers) noexcept LOOP_REALTIME;
    /// Takes over the rate set last at once.
    void ApplyOutputRate();
    /// Silences all at once.
    void ResetRender() noexcept;
    /// Starts the voice of a table entry. Raises like GetSlicePlayRange.
    void PlaySlice(uint32_t index);
    CTesselSampler& GetSampler() noexcept { return fSampler; }
    const CTesselSampler& GetSampler() const noexcept { return fSampler; }
    CEqualizerEffect& GetEqualizer() noexcept { return fEqualizer; }
    const CEqualizerEffect& GetEqualizer() const noexcept { return fEqualizer; }

protected:
    /// For those who hold them against the render side.
    mutable NSSupport::CPlatformMutex fTableMutex;
    mutable NSSupport::CPlatformMutex fStateMutex;

private:
    using SliceTable = std::vector<CSlicePlayRange>;

    /// Control side: makes a change under the state mutex.
    template <class Action>
    void Change(Action change) {
        const NSSupport::CMutexLock lock(fStateMutex);
        change();
        TimePendingStart();
    }
    /// At the settings of the moment, for the rate given.
    CClockSettings ClockSettings(int32_t outputRate) const noexcept LOOP_REALTIME;

    /// With the table mutex held.
    bool HasTable() const noexcept LOOP_REALTIME {
        return fSliceTable != nullptr && !fSliceTable->empty();
    }
    const CSlicePlayRange& TableEntry(uint32_t index) const;
    CSliceTableLookup Lookup() const noexcept LOOP_REALTIME {
        return {*fSliceTable, fWaveSample->GetLoopStart(), fWaveSample->GetLoopEnd()};
    }

    /// With the state mutex held.
    void TimePendingStart();
    void AdoptOutputRate() noexcept LOOP_REALTIME;
    void TakeCommand() noexcept LOOP_REALTIME;
    void TakeStart() noexcept LOOP_REALTIME;
    void TakeOneShot() noexcept LOOP_REALTIME;
    void TakeStop() noexcept LOOP_REALTIME;
    void RunDown() noexcept LOOP_REALTIME;
    void NoteVoice() noexcept LOOP_REALTIME;

    /// With both mutexes held.
    void Trigger(const CClockSettings& now) noexcept LOOP_REALTIME;

    /// Of the render thread, with no mutex held.
    void TakeRequests() noexcept LOOP_REALTIME;
    void Tick() noexcept LOOP_REALTIME;
    int32_t ServeCarry(const CBlockBuffers& buffers, int32_t frameCount) noexcept LOOP_REALTIME;

    CABCWaveSample* const fWaveSample;        // borrowed
    CSliceSequence* fSliceSequence = nullptr; // borrowed
    CTesselSampler fSampler;
    CEqualizerEffect fEqualizer;

    std::unique_ptr<SliceTable> fSliceTable; // guarded by fTableMutex; sorted by fStart

    /// The state mutex guards everything below but the carry. The settings change only under it and
    /// are read by anyone.
    CSequencerPlayFields fPlay;
    std::atomic<bool> fDropMuted = false;
    std::atomic<int32_t> fTempo = 130000;
    std::atomic<int32_t> fTimeSignatureNumerator = 4;
    std::atomic<int32_t> fTimeSignatureDenominator = 4;
    std::atomic<int32_t> fBars = 0;
    std::atomic<int32_t> fBeats = 0;
    std::atomic<bool> fTempoSync = false;
    std::atomic<int32_t> fOutputRate;
    /// While fTablesArePending: got by the control side, waiting for the render side. Otherwise
    /// given up by the render side, until the control side puts others in their place.
    CDSPTablesHandle fTableSlot;
    bool fTablesArePending = false;

    /// Of the render thread: the last block, when a call ended inside it.
    int32_t fCarryCount = 0;
    float fCarryLeft[kBlockFrames] = {};
    float fCarryRight[kBlockFrames] = {};
};

} // namespace NSLOPDLL

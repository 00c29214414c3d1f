#pragma once

#include "LoopLibrary/File/Common/CTesselEditSettings.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/Public/LoopLibrary.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"
#include "Support/Threads/CPlatformMutex.h"
#include "Support/Threads/RealTime.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CExporter;
class CLOP2CreatorInfoChunk;
class CSliceSequence;

/// One open loop: what a handle stands for. Built once from a file's media and its decoded audio,
/// and complete from then on; holds no reference to the media.
///
/// Threads: RenderPreviewBatch belongs to one render thread. The preview's control operations may
/// run beside it. The rest is read-only except the exporter, which one thread at a time may use.
class CLOPObject {
public:
    /// Takes `waveSample` over at the very end; when the constructor raises, the caller still owns
    /// it. Raises what the file reader raises, and XFormatViolation "zero loop length" for a loop
    /// of 0 bars and 0 beats.
    CLOPObject(NSPorter::CMedia* media, std::unique_ptr<CABCWaveSample>& waveSample);
    virtual ~CLOPObject();
    CLOPObject(const CLOPObject&) = delete;
    CLOPObject& operator=(const CLOPObject&) = delete;

    const CTesselFileInfo& GetFileInfo() const { return fFileInfo; }
    const CTesselSequencer& GetSequencer() const { return fSequencer; }
    CExporter& GetExporter() { return *fExporter; }
    bool IsStereo() const;

    bool HasCreatorInfo() const { return fCreatorInfo != nullptr; }
    /// Only when HasCreatorInfo. Fills the texts in order; one that is not Unicode raises
    /// XFormatViolation and leaves those before it filled.
    void GetCreatorInfo(LOPCreatorInfo& record) const;

    /// Whether the host wants the preview to run; the audio follows at its next batch. The answer
    /// holds until the next start or stop on any thread.
    bool IsPreviewRunning();

    /// `rate` within the limits. Changes the preview's and the exporter's rate, or neither. Answers
    /// false, and does nothing, while the preview runs.
    bool SetOutputSampleRate(int32_t rate);
    /// `tempo` within the limits. Of the preview alone: the exporter keeps the file's tempo.
    void SetPreviewTempo(int32_t tempo);
    /// Each answers false, and does nothing, when the preview ran already or did not run. Calls
    /// from several threads take their turns, so that the sequencer gets its commands in the order
    /// in which the calls were answered.
    bool StartPreview();
    bool StopPreview();

    /// `frameCount` frames into fLeft and fRight, or the mean of both into fLeft when fRight is
    /// null. A call beside another one on the same loop gets silence; so do all calls after a
    /// thread died inside one, until the next start that is accepted.
    void RenderPreviewBatch(int32_t frameCount,
                            const LOPRenderBuffers& buffers) noexcept LOOP_REALTIME;

private:
    bool PlaysSlices() const { return fHasSlices && fSequencer.HasSlices(); }
    void RenderPreviewBlocks(int32_t frameCount,
                             const LOPRenderBuffers& buffers) noexcept LOOP_REALTIME;

    std::unique_ptr<CABCWaveSample> fWaveSample; // set last: ownership passes with it
    std::unique_ptr<CSliceSequence> fSliceSequence;
    CTesselSequencer fSequencer; // refers to the two above
    CTesselEditSettings fEditSettings;
    CTesselFileInfo fFileInfo;
    std::unique_ptr<CLOP2CreatorInfoChunk> fCreatorInfo;
    std::unique_ptr<CExporter> fExporter;
    bool fHasSlices = false;
    /// Taken before the sequencer's mutexes, never by the render thread.
    NSSupport::CPlatformMutex fControlMutex;
    bool fPreviewRunning = false; // guarded by fControlMutex, with the commands that follow from it
    std::atomic<bool> fRendering{false};
};

} // namespace NSLOPDLL

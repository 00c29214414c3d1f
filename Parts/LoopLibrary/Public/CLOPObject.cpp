#include "LoopLibrary/Public/CLOPObject.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2CreatorInfoChunk.h"
#include "LoopLibrary/Public/CreatorText.h"
#include "LoopLibrary/Render/Exporter/CExporter.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <algorithm>
#include <utility>

namespace NSLOPDLL {

CLOPObject::CLOPObject(NSPorter::CMedia* media, std::unique_ptr<CABCWaveSample>& waveSample)
    : fSequencer(waveSample.get()) {
    // Slice levels are measured on the peaks, so they come before the slices.
    waveSample->CreatePreview();
    fSliceSequence = std::make_unique<CSliceSequence>(waveSample.get());
    fSequencer.SetSliceSequence(fSliceSequence.get());

    CTesselFile file(media);
    file.ReadSlices(*fSliceSequence);
    file.ReadSequencerSettings(fSequencer);
    file.ReadEditSettings(fEditSettings);
    file.GetFileInfo(fFileInfo);
    if (file.GetKind() == kFileKind_LOP2) {
        fCreatorInfo = file.ReadCreatorInfo();
    }
    if (fSequencer.GetBars() == 0 && fSequencer.GetBeats() == 0) {
        NSLichen::RaiseWithTarget(NSLichen::XFormatViolation("zero loop length"),
                                  NSLichen::LopFileWord());
    }

    // Whatever the file says, a loop follows the tempo.
    fSequencer.SetTempoSync(true);
    fSequencer.RebuildSliceTable();
    fSequencer.ResetRender();

    fExporter = std::make_unique<CExporter>(fSequencer, fEditSettings.fSplitIntoSlices, false);
    fHasSlices = fExporter->GetItemCount() > 0;
    fWaveSample = std::move(waveSample);
}

CLOPObject::~CLOPObject() {
    fExporter.reset();
    fSliceSequence.reset();
    fWaveSample.reset();
    fCreatorInfo.reset();
}

bool CLOPObject::IsStereo() const {
    return fWaveSample->IsStereo();
}

void CLOPObject::GetCreatorInfo(LOPCreatorInfo& record) const {
    CopyCreatorText(fCreatorInfo->GetText1(), record.fText1);
    CopyCreatorText(fCreatorInfo->GetText2(), record.fText2);
    CopyCreatorText(fCreatorInfo->GetText3(), record.fText3);
    CopyCreatorText(fCreatorInfo->GetText4(), record.fText4);
    CopyCreatorText(fCreatorInfo->GetText5(), record.fText5);
}

bool CLOPObject::IsPreviewRunning() {
    const NSSupport::CMutexLock lock(fControlMutex);
    return fPreviewRunning;
}

bool CLOPObject::SetOutputSampleRate(int32_t rate) {
    const NSSupport::CMutexLock lock(fControlMutex);
    if (fPreviewRunning) {
        return false;
    }
    // What can run out of memory comes before any change.
    CDSPTablesHandle previewTables(rate);
    CDSPTablesHandle exportTables(rate);
    fSequencer.CommitOutputRate(std::move(previewTables));
    fExporter->CommitOutputRate(std::move(exportTables));
    return true;
}

void CLOPObject::SetPreviewTempo(int32_t tempo) {
    fSequencer.SetTempo(tempo);
}

bool CLOPObject::StartPreview() {
    const NSSupport::CMutexLock lock(fControlMutex);
    if (fPreviewRunning) {
        return false;
    }
    fPreviewRunning = true;
    // A thread that died inside a batch has left this set.
    fRendering.store(false, std::memory_order_release);
    // A preview without slices counts as running and is silent.
    if (PlaysSlices()) {
        fSequencer.RequestStop();
        fSequencer.MoveToLoopStart();
        fSequencer.Start();
    }
    return true;
}

bool CLOPObject::StopPreview() {
    const NSSupport::CMutexLock lock(fControlMutex);
    if (!fPreviewRunning) {
        return false;
    }
    fPreviewRunning = false;
    if (PlaysSlices()) {
        fSequencer.RequestStop();
    }
    return true;
}

void CLOPObject::RenderPreviewBatch(int32_t frameCount,
                                    const LOPRenderBuffers& buffers) noexcept LOOP_REALTIME {
    const bool busy = fRendering.exchange(true, std::memory_order_acquire);
    if (busy || !fHasSlices) {
        std::fill_n(buffers.fLeft, frameCount, 0.0f);
        if (buffers.fRight != nullptr) {
            std::fill_n(buffers.fRight, frameCount, 0.0f);
        }
    } else {
        RenderPreviewBlocks(frameCount, buffers);
    }
    if (!busy) {
        fRendering.store(false, std::memory_order_release);
    }
}

void CLOPObject::RenderPreviewBlocks(int32_t frameCount,
                                     const LOPRenderBuffers& buffers) noexcept LOOP_REALTIME {
    float left[kBlockFrames];
    float right[kBlockFrames];
    for (int32_t done = 0; done < frameCount;) {
        const int32_t count = std::min(kBlockFrames, frameCount - done);
        fSequencer.Render({left, right}, count);
        if (buffers.fRight != nullptr) {
            std::copy_n(left, count, buffers.fLeft + done);
            std::copy_n(right, count, buffers.fRight + done);
        } else {
            for (int32_t i = 0; i < count; ++i) {
                buffers.fLeft[done + i] = (left[i] + right[i]) * 0.5f;
            }
        }
        done += count;
    }
}

} // namespace NSLOPDLL

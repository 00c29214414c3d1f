#include "LoopLibrary/Public/CLOPDLL.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/Public/CCreateCallback.h"
#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/ClipSamples.h"
#include "LoopLibrary/Public/FillLoopInfo.h"
#include "LoopLibrary/Render/Exporter/CExporter.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace NSLOPDLL {

namespace {

// The two sizes of LOPInfo that mean something: without and with fBitDepth.
constexpr int32_t kShortInfoSize = 32;
constexpr int32_t kFullInfoSize = 36;

template <class Record>
void ZeroRecord(Record* record, int32_t size) {
    std::memset(static_cast<void*>(record), 0, static_cast<size_t>(size));
}

} // namespace

CLOPDLL::CLOPDLL(const NSPorter::CCodeModuleLocation& location) : CDLLTarget(location) {}

CLOPDLL::~CLOPDLL() = default;

CLOPObject* CLOPDLL::FindObject(LOPHandle handle) {
    const NSSupport::CMutexLock lock(fMutex);
    return fLoops.Find(handle);
}

LOPResult CLOPDLL::Create(LOPHandle* handle, const void* buffer, int32_t size,
                          LOPCreateCallback callback, void* userData) {
    const NSSupport::CMutexLock lock(fMutex);
    if (handle == nullptr || buffer == nullptr || size < 1) {
        return kLOPResult_InvalidArgument;
    }
    *handle = 0;
    NSPorter::CMemoryMedia media(size, static_cast<const uint8_t*>(buffer));
    if (!CTesselFile::IsKnownFile(media)) {
        return kLOPResult_FileCorrupt;
    }
    CTesselFile file(&media);
    CTesselFileInfo info;
    file.GetFileInfo(info);
    CCreateCallback progress(static_cast<uint32_t>(info.fWaveSampleInfo.fFrames), callback,
                             userData);
    std::unique_ptr<CABCWaveSample> waveSample = file.ReadWaveSample(progress);
    *handle = fLoops.Add(std::make_unique<CLOPObject>(&media, waveSample));
    return kLOPResult_OK;
}

void CLOPDLL::Delete(LOPHandle* handle) {
    const NSSupport::CMutexLock lock(fMutex);
    if (handle == nullptr) {
        return;
    }
    CLOPObject* object = fLoops.Find(*handle);
    if (object == nullptr || object->IsPreviewRunning()) {
        return;
    }
    const std::unique_ptr<CLOPObject> doomed = fLoops.Remove(object);
    *handle = 0;
}

LOPResult CLOPDLL::GetInfo(LOPHandle handle, int32_t size, LOPInfo* info) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (info == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    if (size < kShortInfoSize) {
        return kLOPResult_InvalidSize;
    }
    ZeroRecord(info, size);
    const CWaveSampleInfo& audio = object->GetFileInfo().fWaveSampleInfo;
    const CTesselSequencer& sequencer = object->GetSequencer();
    const CExporter& exporter = object->GetExporter();
    info->fChannels = static_cast<int16_t>(audio.fChannels);
    info->fSampleRate = audio.fSampleRate;
    info->fSliceCount = static_cast<int32_t>(exporter.GetItemCount());
    info->fStoredTempo = exporter.GetTempo();
    info->fLoopTempo = sequencer.GetLoopTempo();
    info->fPPQLength = ClampedPPQLength(sequencer.GetBars(), sequencer.GetBeats(),
                                        sequencer.GetTimeSignatureNumerator(),
                                        sequencer.GetTimeSignatureDenominator());
    info->fTimeSignatureNumerator = exporter.GetTimeSignatureNumerator();
    info->fTimeSignatureDenominator = exporter.GetTimeSignatureDenominator();
    if (size >= kFullInfoSize) {
        info->fBitDepth = PublicBitDepth(audio.fBitDepth);
    }
    return kLOPResult_OK;
}

LOPResult CLOPDLL::GetInfoFromBuffer(int32_t bufferSize, const void* buffer, int32_t size,
                                     LOPInfo* info) {
    if (bufferSize < 1 || buffer == nullptr || info == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    if (size < kShortInfoSize) {
        return kLOPResult_InvalidSize;
    }
    NSPorter::CMemoryMedia media(bufferSize, static_cast<const uint8_t*>(buffer));
    if (!CTesselFile::IsKnownFile(media)) {
        return kLOPResult_FileCorrupt;
    }
    ZeroRecord(info, size);
    const CTesselFile file(&media);
    CTesselFileInfo fileInfo;
    file.GetFileInfo(fileInfo);
    FillInfoFromFile(fileInfo, *info);
    if (size >= kFullInfoSize) {
        info->fBitDepth = PublicBitDepth(fileInfo.fWaveSampleInfo.fBitDepth);
    }
    return kLOPResult_OK;
}

LOPResult CLOPDLL::GetCreatorInfo(LOPHandle handle, int32_t size, LOPCreatorInfo* info) {
    const CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (info == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    if (size < static_cast<int32_t>(sizeof(LOPCreatorInfo))) {
        return kLOPResult_InvalidSize;
    }
    ZeroRecord(info, size);
    if (!object->HasCreatorInfo()) {
        return kLOPResult_NoCreatorInfo;
    }
    object->GetCreatorInfo(*info);
    return kLOPResult_OK;
}

LOPResult CLOPDLL::GetSliceInfo(LOPHandle handle, int32_t sliceIndex, int32_t size,
                                LOPSliceInfo* info) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (info == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    if (size < static_cast<int32_t>(sizeof(LOPSliceInfo))) {
        return kLOPResult_InvalidSize;
    }
    const CExporter& exporter = object->GetExporter();
    if (sliceIndex < 0 || static_cast<uint32_t>(sliceIndex) >= exporter.GetItemCount()) {
        return kLOPResult_InvalidSlice;
    }
    ZeroRecord(info, size);
    const CExportItemInfo item = exporter.GetItemInfo(static_cast<uint32_t>(sliceIndex));
    info->fPPQPosition = static_cast<int32_t>(item.fPPQPosition);
    info->fFrameCount = static_cast<int32_t>(item.fFrameCount);
    return kLOPResult_OK;
}

LOPResult CLOPDLL::RenderSlice(LOPHandle handle, int32_t sliceIndex, int32_t bufferFrames,
                               const LOPRenderBuffers* buffers) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (buffers == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    // Read once: the record is the host's and another thread of it may write there.
    const LOPRenderBuffers target = *buffers;
    const bool stereo = object->IsStereo();
    if (target.fLeft == target.fRight || target.fLeft == nullptr ||
        stereo != (target.fRight != nullptr)) {
        return kLOPResult_InvalidArgument;
    }
    CExporter& exporter = object->GetExporter();
    if (sliceIndex < 0 || static_cast<uint32_t>(sliceIndex) >= exporter.GetItemCount()) {
        return kLOPResult_InvalidSlice;
    }
    const uint32_t index = static_cast<uint32_t>(sliceIndex);
    if (int64_t{bufferFrames} < int64_t{exporter.GetItemInfo(index).fFrameCount}) {
        return kLOPResult_BufferTooSmall;
    }

    const std::unique_ptr<CABCWaveSample> rendered = exporter.Export(index);
    const int32_t frames = static_cast<int32_t>(rendered->GetFrameCount());
    float* const planes[2] = {target.fLeft, target.fRight};
    for (int32_t channel = 1; channel <= (rendered->IsStereo() ? 2 : 1); ++channel) {
        float* const plane = planes[channel - 1];
        rendered->GetFloatSamples(0, frames, plane, channel);
        ClipSamples(plane, frames);
        std::fill(plane + frames, plane + bufferFrames, 0.0f);
    }
    return kLOPResult_OK;
}

LOPResult CLOPDLL::SetOutputSampleRate(LOPHandle handle, int32_t rate) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (rate < LOP_MIN_SAMPLE_RATE || rate > LOP_MAX_SAMPLE_RATE) {
        return kLOPResult_InvalidSampleRate;
    }
    return object->SetOutputSampleRate(rate) ? kLOPResult_OK : kLOPResult_PreviewRunning;
}

LOPResult CLOPDLL::SetPreviewTempo(LOPHandle handle, int32_t tempo) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (tempo < LOP_MIN_TEMPO || tempo > LOP_MAX_TEMPO) {
        return kLOPResult_InvalidTempo;
    }
    object->SetPreviewTempo(tempo);
    return kLOPResult_OK;
}

LOPResult CLOPDLL::StartPreview(LOPHandle handle) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    return object->StartPreview() ? kLOPResult_OK : kLOPResult_PreviewRunning;
}

LOPResult CLOPDLL::StopPreview(LOPHandle handle) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    return object->StopPreview() ? kLOPResult_OK : kLOPResult_PreviewNotRunning;
}

LOPResult CLOPDLL::RenderPreviewBatch(LOPHandle handle, int32_t frameCount,
                                      const LOPRenderBuffers* buffers) {
    CLOPObject* object = FindObject(handle);
    if (object == nullptr) {
        return kLOPResult_InvalidHandle;
    }
    if (static_cast<uint32_t>(frameCount) > LOP_MAX_BATCH_FRAMES || buffers == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    const LOPRenderBuffers target = *buffers;
    if (target.fLeft == target.fRight || target.fLeft == nullptr) {
        return kLOPResult_InvalidArgument;
    }
    object->RenderPreviewBatch(frameCount, target);
    ClipSamples(target.fLeft, frameCount);
    if (target.fRight != nullptr) {
        ClipSamples(target.fRight, frameCount);
    }
    return kLOPResult_OK;
}

} // namespace NSLOPDLL

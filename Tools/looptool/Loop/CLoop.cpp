#include "looptool/Loop/CLoop.h"

#include "looptool/Console/CProgressBar.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Loop/CLibrary.h"
#include "looptool/Loop/CreatorLines.h"
#include "looptool/Loop/LoadReport.h"
#include "looptool/Loop/ResultText.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>

namespace NSLoopTool {

extern "C" {
static int32_t ShowProgress(int32_t percent, void* progress) {
    (*static_cast<const ProgressFunction*>(progress))(percent);
    return WasInterrupted() ? 1 : 0;
}
}

CLibrary::CLibrary() {
    const LOPResult result = LOPInitializeDLL();
    if (result != kLOPResult_OK) {
        throw CToolFailure("cannot start the library: " + ResultText(result));
    }
}

CLibrary::~CLibrary() {
    LOPUninitializeDLL();
}

CLoop::CLoop(const std::string& path, const ProgressFunction& progress)
    : fPath(path), fName(InputName(path)), fBytes(ReadInputFile(path)) {
    CProgressBar bar("loading " + fName);
    ProgressFunction show = progress ? progress : [&bar](int64_t percent) { bar.Show(percent); };
    const LOPResult result = LOPCreate(&fHandle, fBytes.data(), static_cast<int32_t>(fBytes.size()),
                                       ShowProgress, &show);
    StopIfInterrupted();
    if (result != kLOPResult_OK) {
        throw CToolFailure(fName + ": " + FailedLoadText(fBytes, result));
    }
    Check(LOPGetInfo(fHandle, static_cast<int32_t>(sizeof fInfo), &fInfo));
    fOutputRate = std::clamp<int32_t>(fInfo.fSampleRate, LOP_MIN_SAMPLE_RATE, LOP_MAX_SAMPLE_RATE);
}

CLoop::~CLoop() {
    LOPStopPreview(fHandle);
    LOPDelete(&fHandle);
}

void CLoop::Check(LOPResult result) const {
    if (result != kLOPResult_OK) {
        throw CToolFailure(fName + ": " + ResultText(result));
    }
}

std::vector<std::string> CLoop::GetCreatorTexts() const {
    LOPCreatorInfo info{};
    const LOPResult result = LOPGetCreatorInfo(fHandle, static_cast<int32_t>(sizeof info), &info);
    if (result == kLOPResult_NoCreatorInfo) {
        return {};
    }
    Check(result);
    return {CreatorLines(info.fText1), CreatorLines(info.fText2), CreatorLines(info.fText3),
            CreatorLines(info.fText4), CreatorLines(info.fText5)};
}

LOPSliceInfo CLoop::GetSliceInfo(int32_t index) const {
    LOPSliceInfo info{};
    Check(LOPGetSliceInfo(fHandle, index, static_cast<int32_t>(sizeof info), &info));
    return info;
}

void CLoop::SetOutputSampleRate(int32_t rate) {
    if (rate != 0) {
        Check(LOPSetOutputSampleRate(fHandle, rate));
        fOutputRate = rate;
    }
}

std::vector<std::vector<float>> CLoop::RenderSlice(int32_t index) const {
    const int32_t frames = GetSliceInfo(index).fFrameCount;
    std::vector<std::vector<float>> planes(GetChannels(),
                                           std::vector<float>(static_cast<size_t>(frames)));
    LOPRenderBuffers buffers{planes.front().data(), IsStereo() ? planes.back().data() : nullptr};
    Check(LOPRenderSlice(fHandle, index, frames, &buffers));
    return planes;
}

void CLoop::SetPreviewTempo(int32_t tempo) {
    Check(LOPSetPreviewTempo(fHandle, tempo));
}

void CLoop::StartPreview() {
    Check(LOPStartPreview(fHandle));
}

void CLoop::StopPreview() {
    Check(LOPStopPreview(fHandle));
}

void CLoop::RenderPreview(int32_t frames, float* left, float* right) {
    LOPRenderBuffers buffers{left, right};
    Check(LOPRenderPreviewBatch(fHandle, frames, &buffers));
}

} // namespace NSLoopTool

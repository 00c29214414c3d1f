#include "looptool/CLoop.h"

#include "looptool/CProgressBar.h"
#include "looptool/InputFile.h"
#include "looptool/Interrupt.h"
#include "looptool/ResultText.h"
#include "looptool/ToolFailure.h"

namespace NSLoopTool {

extern "C" {
static int32_t ShowProgress(int32_t percent, void* bar) {
    static_cast<CProgressBar*>(bar)->Show(percent);
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

CLoop::CLoop(const std::string& path) : fPath(path) {
    const std::vector<uint8_t> bytes = ReadInputFile(path);
    CProgressBar bar("loading " + path);
    const LOPResult result =
        LOPCreate(&fHandle, bytes.data(), static_cast<int32_t>(bytes.size()), ShowProgress, &bar);
    StopIfInterrupted();
    Check(result);
}

CLoop::~CLoop() {
    LOPStopPreview(fHandle);
    LOPDelete(&fHandle);
}

void CLoop::Check(LOPResult result) const {
    if (result != kLOPResult_OK) {
        throw CToolFailure(fPath + ": " + ResultText(result));
    }
}

LOPInfo CLoop::GetInfo() const {
    LOPInfo info{};
    Check(LOPGetInfo(fHandle, static_cast<int32_t>(sizeof info), &info));
    return info;
}

std::vector<std::string> CLoop::GetCreatorTexts() const {
    LOPCreatorInfo info{};
    const LOPResult result = LOPGetCreatorInfo(fHandle, static_cast<int32_t>(sizeof info), &info);
    if (result == kLOPResult_NoCreatorInfo) {
        return {};
    }
    Check(result);
    return {info.fText1, info.fText2, info.fText3, info.fText4, info.fText5};
}

LOPSliceInfo CLoop::GetSliceInfo(int32_t index) const {
    LOPSliceInfo info{};
    Check(LOPGetSliceInfo(fHandle, index, static_cast<int32_t>(sizeof info), &info));
    return info;
}

void CLoop::SetOutputSampleRate(int32_t rate) {
    Check(LOPSetOutputSampleRate(fHandle, rate));
}

std::vector<std::vector<float>> CLoop::RenderSlice(int32_t index) const {
    const int32_t frames = GetSliceInfo(index).fFrameCount;
    std::vector<std::vector<float>> planes(IsStereo() ? 2 : 1,
                                           std::vector<float>(static_cast<size_t>(frames)));
    LOPRenderBuffers buffers{planes.front().data(),
                             planes.size() == 2 ? planes.back().data() : nullptr};
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

#include "LoopLibrary/Public/LoopLibrary.h"

#include "FileLib/Glue/FileLibAccess.h"
#include "LoopLibrary/Public/CInsideLibrary.h"
#include "LoopLibrary/Public/CLOPDLL.h"
#include "LoopLibrary/Public/FailureToResult.h"
#include "LoopLibrary/Public/SystemHandle.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Common/OutputRate.h"
#include "Support/Threads/CFloatingPointMode.h"

#include <atomic>
#include <cstddef>
#include <memory>

// The public header states numbers that the insides define.
static_assert(LOP_PPQ == NSLOPDLL::kPulsesPerQuarter &&
              LOP_MIN_TEMPO == NSLOPDLL::kTempoRange.fLeast &&
              LOP_MAX_TEMPO == NSLOPDLL::kTempoRange.fGreatest &&
              LOP_MIN_SAMPLE_RATE == NSLOPDLL::kOutputRate_Minimum &&
              LOP_MAX_SAMPLE_RATE == NSLOPDLL::kOutputRate_Maximum);
// What crosses the boundary has the same layout in every compiler.
static_assert(sizeof(LOPHandle) == 8 && sizeof(LOPResult) == 4);
static_assert(sizeof(LOPInfo) == 36 && offsetof(LOPInfo, fBitDepth) == 32);
static_assert(sizeof(LOPSliceInfo) == 8 && offsetof(LOPSliceInfo, fFrameCount) == 4);
static_assert(sizeof(LOPCreatorInfo) == 1280 && offsetof(LOPCreatorInfo, fText5) == 1024);
static_assert(sizeof(LOPRenderBuffers) == 2 * sizeof(float*) &&
              offsetof(LOPRenderBuffers, fRight) == sizeof(float*));

namespace {

using NSLOPDLL::CLOPDLL;

// The module object, or null before LOPInitializeDLL and after LOPUninitializeDLL. A host that ends
// without uninitialising leaves it be: an audio thread may still run at that time.
std::atomic<CLOPDLL*> gModule{nullptr};

// The frame of every export with a result: nothing is looked at before the module pointer, no
// exception gets out, and the host's floating-point mode is given back on every way out.
template <class Body>
LOPResult Guarded(Body body,
                  LOPResult (*map)() noexcept = NSLOPDLL::ResultOfCurrentException) noexcept {
    CLOPDLL* const module = gModule.load(std::memory_order_acquire);
    if (module == nullptr) {
        return kLOPResult_NotInitialized;
    }
    const NSLOPDLL::CInsideLibrary inside;
    const NSSupport::CFloatingPointMode mode;
    try {
        return body(*module);
    } catch (...) {
        return map();
    }
}

} // namespace

LOPResult LOPInitializeDLL(void) {
    if (gModule.load(std::memory_order_acquire) != nullptr) {
        return kLOPResult_AlreadyInitialized;
    }
    const NSLOPDLL::CInsideLibrary inside;
    try {
        const NSPorter::CCodeModuleLocation location =
            NSPorter::FindCodeModule(NSLOPDLL::GetSystemHandle());
        gModule.store(std::make_unique<CLOPDLL>(location).release(), std::memory_order_release);
        return kLOPResult_OK;
    } catch (...) {
        const LOPResult result = NSLOPDLL::ResultOfCurrentException();
        NSFileLib::ReleaseFileLibSingleton();
        return result;
    }
}

void LOPUninitializeDLL(void) {
    CLOPDLL* const module = gModule.load(std::memory_order_acquire);
    if (module == nullptr) {
        return;
    }
    const NSLOPDLL::CInsideLibrary inside;
    // The module object holds objects of the file library, so it goes first.
    std::unique_ptr<CLOPDLL>(module).reset();
    gModule.store(nullptr, std::memory_order_release);
    NSFileLib::ReleaseFileLibSingleton();
}

LOPResult LOPCreate(LOPHandle* handle, const void* buffer, int32_t size, LOPCreateCallback callback,
                    void* userData) {
    return Guarded(
        [=](CLOPDLL& module) { return module.Create(handle, buffer, size, callback, userData); });
}

void LOPDelete(LOPHandle* handle) {
    Guarded([=](CLOPDLL& module) {
        module.Delete(handle);
        return LOPResult{kLOPResult_OK};
    });
}

LOPResult LOPGetInfo(LOPHandle handle, int32_t size, LOPInfo* info) {
    return Guarded([=](CLOPDLL& module) { return module.GetInfo(handle, size, info); });
}

LOPResult LOPGetInfoFromBuffer(int32_t bufferSize, const void* buffer, int32_t size,
                               LOPInfo* info) {
    return Guarded(
        [=](CLOPDLL& module) { return module.GetInfoFromBuffer(bufferSize, buffer, size, info); });
}

LOPResult LOPGetCreatorInfo(LOPHandle handle, int32_t size, LOPCreatorInfo* info) {
    return Guarded([=](CLOPDLL& module) { return module.GetCreatorInfo(handle, size, info); });
}

LOPResult LOPGetSliceInfo(LOPHandle handle, int32_t sliceIndex, int32_t size, LOPSliceInfo* info) {
    return Guarded(
        [=](CLOPDLL& module) { return module.GetSliceInfo(handle, sliceIndex, size, info); });
}

LOPResult LOPRenderSlice(LOPHandle handle, int32_t sliceIndex, int32_t bufferFrames,
                         LOPRenderBuffers* buffers) {
    return Guarded([=](CLOPDLL& module) {
        return module.RenderSlice(handle, sliceIndex, bufferFrames, buffers);
    });
}

LOPResult LOPSetOutputSampleRate(LOPHandle handle, int32_t rate) {
    return Guarded([=](CLOPDLL& module) { return module.SetOutputSampleRate(handle, rate); });
}

LOPResult LOPStartPreview(LOPHandle handle) {
    return Guarded([=](CLOPDLL& module) { return module.StartPreview(handle); });
}

LOPResult LOPStopPreview(LOPHandle handle) {
    return Guarded([=](CLOPDLL& module) { return module.StopPreview(handle); },
                   NSLOPDLL::UndefinedResult);
}

LOPResult LOPSetPreviewTempo(LOPHandle handle, int32_t tempo) {
    return Guarded([=](CLOPDLL& module) { return module.SetPreviewTempo(handle, tempo); },
                   NSLOPDLL::UndefinedResult);
}

LOPResult LOPRenderPreviewBatch(LOPHandle handle, int32_t frameCount, LOPRenderBuffers* buffers) {
    return Guarded(
        [=](CLOPDLL& module) { return module.RenderPreviewBatch(handle, frameCount, buffers); });
}

#pragma once

#include "LoopLibrary/Public/CLoopTable.h"
#include "LoopLibrary/Public/LoopLibrary.h"
#include "PorterPackage/FileSupport/CodeModule/CDLLTarget.h"
#include "Support/Threads/CPlatformMutex.h"

#include <cstdint>

namespace NSLOPDLL {

/// The module object: the open loops, and the body of every export. Exists from LOPInitializeDLL to
/// LOPUninitializeDLL. Bodies raise freely; the exports turn failures into results.
class CLOPDLL final : public NSPorter::CDLLTarget {
public:
    explicit CLOPDLL(const NSPorter::CCodeModuleLocation& location);
    /// Closes the loops from the newest to the oldest, whether their previews run or not.
    ~CLOPDLL() override;

    LOPResult Create(LOPHandle* handle, const void* buffer, int32_t size,
                     LOPCreateCallback callback, void* userData);
    void Delete(LOPHandle* handle);
    LOPResult GetInfo(LOPHandle handle, int32_t size, LOPInfo* info);
    LOPResult GetCreatorInfo(LOPHandle handle, int32_t size, LOPCreatorInfo* info);
    LOPResult GetSliceInfo(LOPHandle handle, int32_t sliceIndex, int32_t size, LOPSliceInfo* info);
    LOPResult RenderSlice(LOPHandle handle, int32_t sliceIndex, int32_t bufferFrames,
                          const LOPRenderBuffers* buffers);
    LOPResult SetOutputSampleRate(LOPHandle handle, int32_t rate);
    LOPResult SetPreviewTempo(LOPHandle handle, int32_t tempo);
    LOPResult StartPreview(LOPHandle handle);
    LOPResult StopPreview(LOPHandle handle);
    LOPResult RenderPreviewBatch(LOPHandle handle, int32_t frameCount,
                                 const LOPRenderBuffers* buffers);
    /// Touches no loop and takes no lock.
    LOPResult GetInfoFromBuffer(int32_t bufferSize, const void* buffer, int32_t size,
                                LOPInfo* info);

private:
    /// The loop of a handle, or null. Waits for fMutex: the one wait of the audio thread.
    CLOPObject* FindObject(LOPHandle handle);

    NSSupport::CPlatformMutex fMutex; // guards fLoops and every create and delete
    CLoopTable fLoops;
};

} // namespace NSLOPDLL

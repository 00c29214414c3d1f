/*
 * What the JavaScript package needs of the WebAssembly module beside the exports of LoopLibrary.h:
 * the layout of its records as this compiler has it, and a way for the progress of a load to reach
 * JavaScript without a table entry made at run time.
 */
#include "LoopLibrary/Public/LoopLibrary.h"

#include <emscripten/heap.h>
#include <stddef.h>
#include <stdint.h>

#define MODULE_EXPORT(name) __attribute__((used, visibility("default"), export_name(#name)))

/* JavaScript's side of the progress: a percentage; 1 stops the load. */
__attribute__((import_module("env"), import_name("reportProgress"))) int32_t
LoopModuleReportProgress(int32_t percent);

static int32_t ReportProgress(int32_t percent, void* userData) {
    (void)userData;
    return LoopModuleReportProgress(percent);
}

/* LOPCreate that reports to JavaScript. */
MODULE_EXPORT(createLoop)
LOPResult LoopModuleCreate(LOPHandle* handle, const void* buffer, int32_t size) {
    return LOPCreate(handle, buffer, size, ReportProgress, NULL);
}

/* Numbers in the order in which instance.js reads them. */
MODULE_EXPORT(getLayout) const int32_t* LoopModuleGetLayout(void) {
    static const int32_t kLayout[] = {
        LOOPLIBRARY_VERSION_MAJOR,
        LOOPLIBRARY_VERSION_MINOR,
        LOOPLIBRARY_VERSION_PATCH,
        sizeof(LOPHandle),
        sizeof(LOPInfo),
        offsetof(LOPInfo, fChannels),
        offsetof(LOPInfo, fSampleRate),
        offsetof(LOPInfo, fSliceCount),
        offsetof(LOPInfo, fStoredTempo),
        offsetof(LOPInfo, fLoopTempo),
        offsetof(LOPInfo, fPPQLength),
        offsetof(LOPInfo, fTimeSignatureNumerator),
        offsetof(LOPInfo, fTimeSignatureDenominator),
        offsetof(LOPInfo, fBitDepth),
        sizeof(LOPSliceInfo),
        offsetof(LOPSliceInfo, fPPQPosition),
        offsetof(LOPSliceInfo, fFrameCount),
        sizeof(LOPCreatorInfo),
        sizeof(((LOPCreatorInfo*)0)->fText1),
        sizeof(LOPRenderBuffers),
        offsetof(LOPRenderBuffers, fLeft),
        offsetof(LOPRenderBuffers, fRight),
    };
    return kLayout;
}

/* The first byte behind what the module's memory holds: what lies there was never used. */
MODULE_EXPORT(getMemoryEnd) uintptr_t LoopModuleGetMemoryEnd(void) {
    return *emscripten_get_sbrk_ptr();
}

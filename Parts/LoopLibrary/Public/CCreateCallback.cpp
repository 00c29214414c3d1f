#include "LoopLibrary/Public/CCreateCallback.h"

#include "Support/Threads/CFloatingPointMode.h"

namespace NSLOPDLL {

CCreateCallback::CCreateCallback(uint32_t totalFrames, LOPCreateCallback hostFunction,
                                 void* hostData)
    : fTotalFrames(totalFrames), fHostFunction(hostFunction), fHostData(hostData) {}

bool CCreateCallback::ShouldStop(uint32_t framesDone) {
    if (fHostFunction == nullptr) {
        return false;
    }
    // A damaged file may report positions beyond its own total; the percentage follows them.
    const uint64_t percent =
        fTotalFrames == 0 ? 100 : static_cast<uint64_t>(framesDone) * 100 / fTotalFrames;
    // Whatever floating-point mode the host function leaves, the load goes on in its own.
    const NSSupport::CFloatingPointMode keepMode;
    return fHostFunction(static_cast<int32_t>(static_cast<uint32_t>(percent)), fHostData) == 1;
}

} // namespace NSLOPDLL

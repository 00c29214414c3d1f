#pragma once

#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>

namespace NSLOPDLL {

/// Reports the progress of a load to the host as a percentage and asks whether to stop.
class CCreateCallback final : public CLOP2DecompressCallback {
public:
    /// `hostFunction` may be null: then nothing is reported and nothing stops the load.
    /// `totalFrames` is what 100 percent stands for; of a loop that states 0 frames every report
    /// says 100.
    CCreateCallback(uint32_t totalFrames, LOPCreateCallback hostFunction, void* hostData);

    /// Whether the host answered exactly 1.
    bool ShouldStop(uint32_t framesDone) override;

private:
    const uint32_t fTotalFrames;
    const LOPCreateCallback fHostFunction;
    void* const fHostData;
};

} // namespace NSLOPDLL

#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Follows the loading of audio and may stop it. This class lets every load run.
class CLOP2DecompressCallback {
public:
    CLOP2DecompressCallback() = default;
    virtual ~CLOP2DecompressCallback();
    CLOP2DecompressCallback(const CLOP2DecompressCallback&) = delete;
    CLOP2DecompressCallback& operator=(const CLOP2DecompressCallback&) = delete;

    /// Called with the frames finished so far, or, when the file's pieces are laid out on a grid,
    /// with the frame where the next piece goes, which need not grow. True stops the load; the
    /// answer to the last call of a load is ignored.
    virtual bool ShouldStop(uint32_t framesDone);
};

} // namespace NSLOPDLL

#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Frames of one block: the unit of all rendering and the grid of all triggers.
constexpr int32_t kBlockFrames = 64;

/// Two borrowed channel arrays that a render operation fills or works on in place. Both always
/// point to at least kBlockFrames floats, full scale 1.0; for a mono loop the right one may be
/// scratch.
struct CBlockBuffers {
    float* fLeft;
    float* fRight;
};

} // namespace NSLOPDLL

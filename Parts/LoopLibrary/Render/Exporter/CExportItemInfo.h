#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// What one exported item is: its place in pulses of 15360 to the quarter note, counted from the
/// loop start, and the output frames that its export fills, at most 2^31 - 1.
struct CExportItemInfo {
    uint32_t fPPQPosition = 0;
    uint32_t fPPQEnd = 0;
    uint32_t fFrameCount = 0;
};

} // namespace NSLOPDLL

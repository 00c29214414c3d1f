#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Settings of the authoring tool's editor that a file may carry. Rendering needs fSplitIntoSlices
/// alone.
struct CTesselEditSettings {
    int32_t fGridMode = 10;
    uint8_t fGridEnabled = 1; // no file stores it
    uint8_t fShaperEnabled = 1;
    uint8_t fCompressorEnabled = 0;
    uint8_t fEqualizerEnabled = 0;
    int32_t fViewMode = 0; // 0 to 3
    uint32_t fViewStart = 0;
    uint32_t fViewEnd = 0;
    uint8_t fViewFlag = 0;
    uint8_t fSplitIntoSlices = 1;
};

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace NSLoopTool {

/// What the headers of a loop file tell, without its audio.
struct SLoopHeader {
    std::string_view fKind; // empty: no loop file
    LOPResult fResult = kLOPResult_OK;
    LOPInfo fInfo{};
    int32_t fBars = 0;
    int32_t fBeats = 0;
    double fSeconds = 0.0;
    std::string fFirstText; // the first creator text that is not empty
};

/// Reads the headers alone: pages of the audio are not touched. The library must be initialised;
/// any number of threads may read.
SLoopHeader ReadLoopHeader(std::span<const uint8_t> bytes);

} // namespace NSLoopTool

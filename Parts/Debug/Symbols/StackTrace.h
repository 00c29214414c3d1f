// Who called whom.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace NSDebugPackage {

constexpr uint32_t kMostStackFrames = 50;

struct SStackTrace {
    uint32_t fCount = 0;
    std::array<void*, kMostStackFrames> fFrames{}; // return addresses, the innermost first
};

/// Of the calling thread, beginning with the function that calls this. Waits for the symbol lock,
/// as the other does.
void CaptureStackTrace(SStackTrace& trace);

/// One line for each frame: "<file>(<line>) : <function> + 0x<offset>". A frame without a symbol
/// bears its address in 16 hex digits. A trace of more than 50 frames gives the one line "***
/// Invalid stack trace data ***".
std::vector<std::string> PrintStackTrace(const SStackTrace& trace);

} // namespace NSDebugPackage

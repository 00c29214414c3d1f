#pragma once

#include "looptool/Audio/AudioReader.h"
#include "looptool/Making/MakePlan.h"
#include "looptool/Making/SettingsFile.h"

#include <cstdint>
#include <string>

namespace NSLoopTool {

/// What the command line asks of `make`, apart from files.
struct SMakeWish {
    SKnownLoop fKnown;
    std::string fSlices;       // see CutsOf, or "auto"; empty is "none"
    int32_t fSensitivity = 50; // of "auto", 0 to 99
    int32_t fBits = 0;         // 0 keeps those of the audio
    bool fIsVerbose = false;
};

/// Reads the audio and works out everything that goes into the loop file. CToolFailure tells what
/// is wrong or missing.
SMakePlan PlanLoop(const std::string& audioFile, const SMakeWish& wish,
                   const ProgressFunction& progress);

} // namespace NSLoopTool

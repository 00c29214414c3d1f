#pragma once

#include "looptool/Audio/AudioReader.h"
#include "looptool/Audio/SAudio.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSLOPDLL {
class CABCWaveSample;
}

namespace NSLoopTool {

/// The audio of a loop file as it is stored; also of a file whose loop has no length. CToolFailure,
/// naming the file, when that fails.
SAudio ReadStoredAudio(const std::vector<uint8_t>& bytes, const std::string& name,
                       const ProgressFunction& progress);

/// The same audio out of the library's hands.
SAudio AudioOfSample(const NSLOPDLL::CABCWaveSample& sample);

} // namespace NSLoopTool

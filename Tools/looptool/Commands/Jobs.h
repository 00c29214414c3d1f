#pragma once

#include "looptool/Audio/AudioReader.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace NSLoopTool {

/// Does the pieces of work, `jobs` at a time (0: one for each processor), with one progress bar
/// over all. A CToolFailure of one among several is told on standard error and does not stop the
/// rest; the answer is the exit code of the worst. Of a single piece it is passed on, as is
/// everything else that a piece raises. Ctrl-C stops it.
int RunJobs(size_t count, int32_t jobs, const std::string& label,
            const std::function<void(size_t index, const ProgressFunction& progress)>& work);

} // namespace NSLoopTool

#pragma once

#include "looptool/Audio/AudioReader.h"
#include "looptool/Making/MakePlan.h"

#include <cstdint>
#include <vector>

namespace NSLoopTool {

/// The bytes of the loop file. CToolFailure says what the kind cannot hold; Ctrl-C stops the
/// packing.
std::vector<uint8_t> PackLoop(const SMakePlan& plan, const ProgressFunction& progress);

/// Likewise for one kind each.
std::vector<uint8_t> PackLOP2(const SMakePlan& plan, const ProgressFunction& progress);
std::vector<uint8_t> PackTSL(const SMakePlan& plan);
std::vector<uint8_t> PackLOP(const SMakePlan& plan);

/// Raises CToolFailure for creator texts that would not come back whole.
void CheckTexts(const std::vector<std::string>& texts);

} // namespace NSLoopTool

#pragma once

#include <cstdint>
#include <span>

namespace NSLoopTool {

/// The frame where the attack near a detected time begins: where the energy leaves what sounded
/// before. Detectors answer some milliseconds early or late; `frame` may be up to 30 ms behind the
/// attack and 20 ms before it. The audio is a circle; the answer is one of its frames.
int64_t WalkBack(std::span<const float> mono, double rate, double frame);

} // namespace NSLoopTool

#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// The tempo that follows from a loop's length: `beats` units of the time signature, whatever their
/// note value, in `frames` frames at `sampleRate`. Thousandths of a beat per minute, at most
/// 999999; 0 for a loop of no length.
int32_t LoopTempo(int64_t frames, uint32_t sampleRate, int64_t beats) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

// Several values in the lanes of a vector (Common/Lanes.h), on every processor that has vectors.
#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

void FillFourRampsLanes(float* const* targets, float* values,
                        const float* steps) noexcept LOOP_REALTIME;
void ReverseLanes(float* values, int32_t count) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

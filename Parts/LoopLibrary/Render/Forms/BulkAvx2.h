// Only where the processor has AVX2. The other bulk loops wait for memory and gain nothing by it.
#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

void ReadFloats16Avx2(const int16_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void ReadFloats24Avx2(const int32_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

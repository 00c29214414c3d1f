// Several values in the lanes of a vector; SSE2 is in every x86-64 processor.
#pragma once

#include "LoopLibrary/Render/Forms/RenderForms.h"

namespace NSLOPDLL {

void ReadFloats16Sse2(const int16_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void ReadFloats24Sse2(const int32_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void StoreFloats16Sse2(const float* values, int32_t count, int16_t* samples) noexcept;
void StoreFloats24Sse2(const float* values, int32_t count, int32_t* samples) noexcept;
void Narrow24Sse2(const int32_t* samples, int32_t count, int16_t* values) noexcept;
SPeaks FindPeaksSse2(const int16_t* values, int32_t count) noexcept;

} // namespace NSLOPDLL

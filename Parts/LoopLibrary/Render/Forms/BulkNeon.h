// Several values in the lanes of a vector; NEON is in every 64-bit ARM processor.
#pragma once

#include "LoopLibrary/Render/Forms/RenderForms.h"

namespace NSLOPDLL {

void ReadFloats16Neon(const int16_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void ReadFloats24Neon(const int32_t* samples, int32_t count, float* values) noexcept LOOP_REALTIME;
void StoreFloats16Neon(const float* values, int32_t count, int16_t* samples) noexcept;
void StoreFloats24Neon(const float* values, int32_t count, int32_t* samples) noexcept;
void Narrow24Neon(const int32_t* samples, int32_t count, int16_t* values) noexcept;
SPeaks FindPeaksNeon(const int16_t* values, int32_t count) noexcept;

} // namespace NSLOPDLL

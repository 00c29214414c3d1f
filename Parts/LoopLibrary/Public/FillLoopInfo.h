#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>

namespace NSLOPDLL {

struct CTesselFileInfo;

/// A loop's length in pulses, clamped to 32 bits signed. `denominator` is at least 1.
int32_t ClampedPPQLength(int32_t bars, int32_t beats, int32_t numerator, int32_t denominator);

/// The depth as hosts are told it: 0 for any depth but 8, 16, 20, 22, 24 and 32.
int32_t PublicBitDepth(int32_t bitDepth);

/// Fills a zeroed record, all but fBitDepth, with what the file states, nothing clamped. Raises
/// XFormatViolation with channels, rate and slice count filled: "zero loop length" for a loop of no
/// beats, an empty text for a time signature over 0.
void FillInfoFromFile(const CTesselFileInfo& fileInfo, LOPInfo& info);

} // namespace NSLOPDLL

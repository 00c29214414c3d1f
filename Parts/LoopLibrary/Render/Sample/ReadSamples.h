// Stored audio as floats.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>

namespace NSLOPDLL {

/// Bytes that a file takes for a sample: 1 for a depth of 8, 2 for 16, 3 for 20, 22 and 24. 0 for
/// every other depth, which files do not have.
int32_t GetBytesPerSample(int32_t bitDepth) noexcept;

/// Reads `frames` frames of big-endian signed samples at the media's cursor and stores frames ×
/// channels floats, interleaved as in the file, on the scale of a signed 24-bit integer whatever
/// the depth. Depths are 8, 16, and 20, 22 or 24 in three bytes.
///
/// Raises XFormatViolation: with "bad bytes/frame" for another depth and "bad CWaveSampleInfo
/// format" for channels outside 1 to 2048, both before anything is read; with an empty text when
/// the media ends too early, after the lots of at most 2048 values before that.
void ReadSamples(NSPorter::CMedia& media, int32_t channels, int32_t bitDepth, int64_t frames,
                 float* out);

} // namespace NSLOPDLL

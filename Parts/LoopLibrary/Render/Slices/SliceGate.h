#pragma once

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <cstdint>

namespace NSLOPDLL {

/// The peak of the preview entries that begin in [position / 64, (position + frames) / 64), as a
/// fraction of full scale; 0 when there is none. The measure works in wrapping 16-bit arithmetic:
/// -32768 counts as quiet, and stereo entries are added with their signs, so that channels in
/// opposite phase cancel and two full-scale ones wrap.
float GetPeakLevel(const CABCWaveSample& sample, uint32_t position, uint32_t frames) noexcept;

/// Frames from `start` until the sound has died away under `gateLimit`, at most `frames`. Looks at
/// 1024 frames and then at 128 at a time.
uint32_t MeasureGated(const CABCWaveSample& sample, uint32_t start, uint32_t frames,
                      float gateLimit) noexcept;

} // namespace NSLOPDLL

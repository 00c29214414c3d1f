#pragma once

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"

#include <memory>
#include <vector>

namespace NSLOPDLL {

/// The slice table of a loop: the active slices as ranges in rising order, none of which straddles
/// the sample's loop start or loop end. Without an active slice the ranges cover the whole sample.
/// With `synced` each range ends where its slice's length does and gets a tail; without, it reaches
/// to the next active slice. Muted slices are left out when both flags are set.
std::unique_ptr<std::vector<CSlicePlayRange>> BuildSlicePlayRanges(const CABCWaveSample& waveSample,
                                                                   const CSliceSequence& sequence,
                                                                   bool dropMuted, bool synced);

/// Sets the three tail fields of a range from its start and end: the strongest frame of the left
/// channel shortly before the end, and the strongest one some way before that. A range that is too
/// short, at 44100 under 1200 frames, is its own tail with a gain of 1.0.
void FindTail(const CABCWaveSample& waveSample, CSlicePlayRange& range) noexcept;

} // namespace NSLOPDLL

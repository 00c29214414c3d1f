#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace NSLoopTool {

/// How a loop is felt. `fSwing` is where the offbeat of two equal halves falls, 0.5 straight to
/// 0.67 triplets. It moves the sixteenths or, with `fSwungEighths`, the eighths.
struct SFeel {
    double fSwing = 0.5;
    bool fSwungEighths = false;
};

/// The feels that are told apart, straight ones first.
std::span<const SFeel> BeatFeels();

/// A place where a note may begin. Each beat has four.
struct SBeatPlace {
    size_t fBeat = 0;        // from 0; at the loop's end the number of its beats
    size_t fPart = 0;        // 0 the beat, 2 the offbeat, 1 and 3 the sixteenths
    double fCloseness = 0.0; // 1 on the place, falling to 0 some 30 ms off it
};

/// The nearest place of a grid that begins at frame 0.
SBeatPlace NearestPlace(int64_t frame, double framesOfBeat, double rate, const SFeel& feel);

} // namespace NSLoopTool

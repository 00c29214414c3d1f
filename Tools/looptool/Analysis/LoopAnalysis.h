#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace NSLoopTool {

// Where the hits of a loop stand, how fast it is, and where to cut it. Pure functions of their
// arguments: no files, no state, the same result for the same input; any thread may call them.
// "mono" is the loop's audio as one channel (the mean of two), full scale 1.0, finite, and is seen
// as a circle: frame 0 follows the last one.

/// A place where a sound begins.
struct SOnset {
    /// The frame where the energy begins to rise, 0 to the number of frames - 1. Detectors that
    /// answer late are walked back to it.
    int64_t fFrame = 0;
    /// Above 0 to 1, in relation to the strongest onset of the loop, which has 1.
    double fStrength = 0.0;
};

/// The onsets of a loop in rising order, no two on one frame. A hit that stands at frame 0 is
/// found, since the loop's end stands before it. Empty for silence and for audio too short to
/// judge.
///
/// rate         frames per second, 1000 to 1000000
/// sensitivity  0 to 99: 0 gives the strongest hits alone, 99 the weakest too; 50 is the default of
///              the program
/// quarters     the loop's length in quarter notes, 0 if it is not known. Most of what is played
///              begins on a sixteenth, so weaker onsets count there, and only stronger ones beside
///              it, as far as the strong onsets of the loop show that it keeps to such a grid
std::vector<SOnset> FindOnsets(std::span<const float> mono, int rate, int sensitivity,
                               double quarters = 0.0);

struct STimeSignature {
    int fNumerator = 4;   // beats of a bar, 1 to 15
    int fDenominator = 4; // note value of a beat, 1 to 15
};

/// What a person has said of a loop. The guess keeps to it, and finds out the rest.
struct SKnown {
    std::optional<int> fBars;                 // 1 to 999
    std::optional<double> fTempo;             // quarter notes per minute, 20 to 450
    std::optional<STimeSignature> fSignature; // else 4/4 or 3/4
};

struct STempoGuess {
    double fTempo = 0.0; // quarter notes per minute; it is exact for the bars: see GuessTempo
    int fBars = 0;       // at least 1
    int fNumerator = 4;
    int fDenominator = 4;
    /// 0 to 1, and meant as a probability: of guesses with 0.8, eight of ten are right. The program
    /// asks for numbers below kEnoughConfidence.
    double fConfidence = 0.0;
};

/// Below this the program asks for the tempo or the bars instead of taking a guess.
constexpr double kEnoughConfidence = 0.5;

/// The most likely whole number of bars of a loop, weighed by its length and by where its onsets
/// fall. Bars, signature, tempo and length agree: the frames are fBars bars at fTempo. A known
/// tempo that makes no whole number of bars gives a guess of confidence 0.
///
/// frames   length of the loop, at least 1
/// rate     frames per second
/// onsets   of FindOnsets; empty is allowed and gives a low confidence unless bars or tempo are
/// known
STempoGuess GuessTempo(size_t frames, int rate, std::span<const SOnset> onsets,
                       const SKnown& known);

/// Where to cut for those onsets: one cut each, at a zero crossing at least 0.4 ms before the
/// attack (or its quietest frame shortly before, where there is no crossing near), never inside the
/// attack. In rising order, none twice, 0 to the number of frames - 1.
std::vector<int64_t> PlaceCuts(std::span<const float> mono, int rate,
                               std::span<const SOnset> onsets);

} // namespace NSLoopTool

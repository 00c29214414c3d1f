#pragma once

#include "looptool/Making/MakePlan.h"

#include <string>
#include <vector>

namespace NSLoopTool {

/// The cuts that `--slices` asks for, in rising order, none twice, at least one: "none", "cue" (the
/// audio file's own marks), "beats/N" (N to a beat), a list of frames, seconds ("0.25s") and beats
/// ("1.5b"), or a file: the labels of an audio editor, or the JSON that `slices --json` prints.
/// Seconds count from the audio's start, beats from the loop's. Audio, loop and length of the plan
/// are known already.
///
/// CToolFailure, with the exit code of wrong usage, for what is none of these and for cuts behind
/// the audio.
std::vector<SCut> CutsOf(const std::string& wish, const SMakePlan& plan);

/// Sorts them, drops those that stand twice, and puts one at the start if there are none.
std::vector<SCut> OrderedCuts(std::vector<SCut> cuts);

} // namespace NSLoopTool

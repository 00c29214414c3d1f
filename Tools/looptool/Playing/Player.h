#pragma once

#include "looptool/Loop/CLoop.h"

namespace NSLoopTool {

/// Whether the program was built with PortAudio.
bool HasPortAudio();

/// Plays the loop's preview on the system's usual output until `loops` passes are over (0: for
/// ever), "q" is pressed or Ctrl-C. "+" and "-", or the arrows up and down, change the tempo by
/// one, the space bar stops and starts. A line on a terminal shows bar, beat and tempo. `tempo` is
/// in beats per minute, 0 for the stored one. CToolFailure when there is no sound, or no PortAudio
/// in this build.
void PlayLoop(CLoop& loop, double tempo, double loops);

} // namespace NSLoopTool

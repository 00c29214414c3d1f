#pragma once

#include "LoopWriter/SyntheticLoop.h"

/// Two bars of a swung break with a bass line at 93 beats per minute, 44100 Hz, stereo, 24 bits.
/// fHits are the frames of its hits in the order of time; hits on one step count once.
NSLoopWriter::SDrumLoop MakeBreakLoop();

#pragma once

#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/SyntheticLoop.h"
#include "LoopWriter/TSLFile.h"

namespace NSLoopWriter {

/// Whole files of the drum pattern: a slice on each hit, length and tempo as the options say, four
/// beats to a bar. The older kinds are always mono and of 16 bits.
SLOP2File MakeDrumLOP2(const SDrumLoopOptions& options);
STSLFile MakeDrumTSL(const SDrumLoopOptions& options);
SLOPFile MakeDrumLOP(const SDrumLoopOptions& options);

} // namespace NSLoopWriter

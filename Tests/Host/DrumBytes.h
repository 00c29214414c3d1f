#pragma once

#include "LoopWriter/DrumFiles.h"

#include <cstdint>
#include <vector>

using Bytes = std::vector<uint8_t>;

inline NSLoopWriter::SDrumLoopOptions DrumOptions(int32_t bitDepth = 16, bool stereo = true) {
    NSLoopWriter::SDrumLoopOptions options;
    options.fBitDepth = bitDepth;
    options.fStereo = stereo;
    return options;
}

inline Bytes DrumLOP2(int32_t bitDepth = 16, bool stereo = true) {
    return WriteLOP2(NSLoopWriter::MakeDrumLOP2(DrumOptions(bitDepth, stereo)));
}

inline Bytes DrumTSL() {
    return WriteTSL(NSLoopWriter::MakeDrumTSL(DrumOptions(16, false)));
}

inline Bytes DrumLOP() {
    return WriteLOP(NSLoopWriter::MakeDrumLOP(DrumOptions(16, false)));
}

#pragma once

#include "Tests/Host/DrumBytes.h"

/// A loop whose sound is the same on every system, and the output rate to hear it at.
struct SListening {
    const char* fName;
    Bytes fFile;
    int32_t fOutputRate;
};

/// In the order of the hash and of Reference/Sound.f32.
std::vector<SListening> Listenings();

#pragma once

#include <cstdint>
#include <vector>

namespace NSLoopTool {

/// A note of a standard MIDI file. Times are ticks of LOP_PPQ to a quarter note.
struct SMidiNote {
    int64_t fStart = 0;
    int64_t fEnd = 0;
    int32_t fChannel = 0; // 0 to 15
    int32_t fKey = 0;     // 0 to 127
};

struct SMidiSong {
    double fQuartersPerMinute = 120.0;
    int32_t fNumerator = 4;
    int32_t fDenominator = 4;
    int64_t fLength = 0; // ticks
    std::vector<SMidiNote> fNotes;
};

/// The bytes of a file of one track. A time signature that MIDI cannot say, since its denominator
/// is not a power of two, is left out.
std::vector<uint8_t> MidiFileBytes(const SMidiSong& song);

} // namespace NSLoopTool

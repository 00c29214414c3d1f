#pragma once

#include "looptool/Audio/AudioFormat.h"
#include "looptool/CommandLine/CCommand.h"

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <string>

namespace NSLoopTool {

// Options that several commands share.

/// Beats per minute.
constexpr double kLeastTempo = LOP_MIN_TEMPO / 1000.0;
constexpr double kGreatestTempo = LOP_MAX_TEMPO / 1000.0;

inline void AddRate(CCommand& command, int32_t& rate) {
    command.AddInteger("--rate", rate, LOP_MIN_SAMPLE_RATE, LOP_MAX_SAMPLE_RATE,
                       "Output rate in Hz; else the loop's own");
}

inline void AddTempo(CCommand& command, double& tempo) {
    command.AddDecimal("--tempo", tempo, kLeastTempo, kGreatestTempo,
                       "Beats per minute; else the stored tempo");
}

inline void AddFormat(CCommand& command, SFormatWish& wish, const std::string& usualBits) {
    command.AddChoice("--format", wish.fContainer, {"wav", "aiff", "flac", "raw"},
                      "Kind of audio file; else by the suffix");
    command.AddChoice("--bits", wish.fBits, {"16", "24", "float"},
                      "Depth of the samples; else " + usualBits);
}

inline void AddForce(CCommand& command, bool& force,
                     const std::string& what = "Replace files that exist") {
    command.AddFlag("--force", force, what);
}

inline void AddJobs(CCommand& command, int32_t& jobs) {
    command.AddInteger("--jobs", jobs, 1, 256, "Files at a time; else one for each processor");
}

} // namespace NSLoopTool

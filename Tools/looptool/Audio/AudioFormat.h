#pragma once

#include <cstdint>
#include <string>

namespace NSLoopTool {

enum class EContainer { kWav, kAiff, kFlac, kRaw };
enum class EEncoding { kPcm16, kPcm24, kFloat };

struct SAudioFormat {
    EContainer fContainer = EContainer::kWav;
    EEncoding fEncoding = EEncoding::kFloat;

    size_t GetSampleBytes() const;
    /// With the point: ".wav".
    std::string GetSuffix() const;
};

/// What the command line says of an output's format; empty where it says nothing.
struct SFormatWish {
    std::string fContainer; // "wav", "aiff", "flac", "raw"
    std::string fBits;      // "16", "24", "float"
};

/// The format of an output: the container by the wish or else by the path's suffix, WAV if it has
/// none. The encoding by the wish, or else `usual`; FLAC has none of floats, and takes 24 bits
/// where floats are only usual. CToolFailure, with the exit code of wrong usage, for a suffix of
/// another kind of file and for FLAC of floats.
SAudioFormat ChooseAudioFormat(const SFormatWish& wish, const std::string& path, EEncoding usual);

} // namespace NSLoopTool

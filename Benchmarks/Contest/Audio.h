// The audio that decoders are measured on.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace LoopBench {

struct SClip {
    std::string fName;
    int32_t fBitDepth = 16;
    int32_t fSampleRate = 44100;
    std::vector<int32_t> fLeft;
    std::vector<int32_t> fRight; // empty in mono

    bool IsStereo() const { return !fRight.empty(); }
    int32_t GetChannelCount() const { return IsStereo() ? 2 : 1; }
    int32_t GetFrameCount() const { return static_cast<int32_t>(fLeft.size()); }
    bool operator==(const SClip&) const = default;
};

struct SClipSet {
    std::string fName;
    std::vector<SClip> fClips;
    double CountSamples() const;
};

/// Recorded loops in stereo, mono and, resampled to 48 kHz, with 24 bits; noise; digital silence.
/// Throws std::runtime_error where the recordings are not installed.
std::vector<SClipSet> MakeClipSets(bool quick);

} // namespace LoopBench

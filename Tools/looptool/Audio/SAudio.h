#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace NSLoopTool {

/// How many frames are read, converted or written at a time where a whole file need not be held.
constexpr size_t kLotFrames = 65536;

/// Audio as integers: one plane for each channel, each sample in the low `fBitDepth` bits with its
/// sign extended. Positions are frames.
struct SAudio {
    int32_t fSampleRate = 44100;
    int32_t fBitDepth = 16; // 16 or 24
    std::vector<std::vector<int32_t>> fPlanes;
    /// The cue points or markers of the file, as it has them.
    std::vector<int64_t> fCues = {};
    /// Its first loop: start, and end behind the last frame.
    std::optional<std::pair<int64_t, int64_t>> fLoop = {};

    size_t GetFrameCount() const { return fPlanes.empty() ? 0 : fPlanes.front().size(); }
};

/// The mean of the channels, full scale 1.0.
std::vector<float> MonoOf(const SAudio& audio);

} // namespace NSLoopTool

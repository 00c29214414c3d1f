#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Audio as integers: one plane for each channel, each sample in the low `fBitDepth` bits with its
/// sign extended.
struct SAudio {
    int32_t fSampleRate = 44100;
    int32_t fBitDepth = 16; // 16 or 24
    std::vector<std::vector<int32_t>> fPlanes;

    size_t GetFrameCount() const { return fPlanes.empty() ? 0 : fPlanes.front().size(); }
};

/// Called with a percentage while a file is read or written.
using ProgressFunction = std::function<void(int64_t)>;

/// Reads an audio file of one or two channels. PCM of 16 and 24 bits is kept to the bit; 8 bits
/// become 16; everything finer, compressed with loss, or floating point becomes 24.
SAudio ReadAudioFile(const std::string& path, const ProgressFunction& progress);

/// Write a WAV file of PCM in the depth of the audio, or of 32-bit floats. The path "-" is standard
/// output. An unfinished file is removed again.
void WriteAudioFile(const std::string& path, const SAudio& audio);
void WriteFloatFile(const std::string& path, int32_t sampleRate,
                    const std::vector<std::vector<float>>& planes);

} // namespace NSLoopTool

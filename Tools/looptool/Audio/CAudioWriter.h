#pragma once

#include "looptool/Audio/AudioFormat.h"
#include "looptool/Audio/SAudio.h"
#include "looptool/Files/COutputFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace NSLoopTool {

class CABCFlacEncoder;

/// An audio file, or a stream to standard output, written as the frames come: the number of frames
/// is known ahead, so the header goes first and memory does not grow with the length. Dropped
/// without Commit it leaves nothing behind. Failures are CToolFailure.
class CAudioWriter {
public:
    /// CToolFailure, with the exit code of wrong usage, for more frames than the container counts.
    CAudioWriter(const std::string& path, SAudioFormat format, int32_t sampleRate, size_t channels,
                 uint64_t frames);
    ~CAudioWriter();
    CAudioWriter(const CAudioWriter&) = delete;
    CAudioWriter& operator=(const CAudioWriter&) = delete;

    /// The next `count` frames, from frame `first` of the planes. Full scale is 1.0; PCM is rounded
    /// to the nearest value and clipped.
    void Write(const std::vector<std::vector<float>>& planes, size_t first, size_t count);
    /// Likewise of integers of `bitDepth` bits, 16 or 24: kept to the bit where the file's depth is
    /// no less.
    void Write(const std::vector<std::vector<int32_t>>& planes, int32_t bitDepth, size_t first,
               size_t count);
    /// Hands the frames so far to whoever reads the pipe.
    void Flush() { fOutput.Flush(); }
    /// All frames that were announced are written.
    void Commit();

private:
    std::vector<uint8_t> MakeWavHeader() const;
    std::vector<uint8_t> MakeAiffHeader() const;
    void PutSamples(const std::vector<int32_t>& words, const std::vector<float>& floats);

    const SAudioFormat fFormat;
    const uint32_t fSampleRate;
    const size_t fChannels;
    const uint64_t fFrames;
    COutputFile fOutput;
    std::unique_ptr<CABCFlacEncoder> fFlac;
};

/// Writes all of it.
void WriteAudioFile(const std::string& path, SAudioFormat format, const SAudio& audio);
void WriteFloatFile(const std::string& path, SAudioFormat format, int32_t sampleRate,
                    const std::vector<std::vector<float>>& planes);

} // namespace NSLoopTool

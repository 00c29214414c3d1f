#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// "SINF": shape of the audio and its loop.
class CLOP2SampleInfoChunk final : public CABCLOP2Chunk {
public:
    explicit CLOP2SampleInfoChunk(NSPorter::CMedia& media);

    /// 1 or 2.
    uint8_t GetChannels() const { return fChannels; }
    bool IsStereo() const { return fChannels == 2; }
    /// Bits of a sample, 16 or 24.
    uint32_t GetBitDepth() const { return fBitDepth; }
    /// Frames per second, 1000 to 1000000.
    uint32_t GetSampleRate() const { return fSampleRate; }
    /// 1 or more.
    int32_t GetFrames() const { return fFrames; }
    /// 0 <= start <= end <= frames, and start is below frames. The loop may be empty.
    int32_t GetLoopStart() const { return fLoopStart; }
    int32_t GetLoopEnd() const { return fLoopEnd; }

private:
    bool IsValid() const;

    uint8_t fChannels;
    uint32_t fBitDepth;
    uint32_t fSampleRate;
    int32_t fFrames;
    int32_t fLoopStart;
    int32_t fLoopEnd;
};

} // namespace NSLOPDLL

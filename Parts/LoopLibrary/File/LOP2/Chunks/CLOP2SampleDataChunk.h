#pragma once

#include "LoopLibrary/File/LOP2/Chunks/CABCLOP2Chunk.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2DecompressCallback;
class CLOP2SampleInfoChunk;

/// "SDAT": the compressed audio. Has no fields: constructing it decodes.
///
/// The audio is decoded in blocks of up to kBlockFrameLimit frames. The callback is asked before
/// each block, with the frames done, and once more at the end, where its answer is dropped. When it
/// says stop, XAbort "stopped by callback" is raised. A stream that ends early raises
/// std::domain_error.
class CLOP2SampleDataChunk final : public CABCLOP2Chunk {
public:
    static constexpr int32_t kBlockFrameLimit = 1048576;

    /// Decodes into `waveSample`, which has its final shape.
    CLOP2SampleDataChunk(NSPorter::CMedia& media, CABCWaveSample& waveSample,
                         CLOP2DecompressCallback& callback);

    /// Goes through the same blocks and reports and keeps no audio. For a stream that is too short
    /// for its frames: the failure, or the stop, comes where it would come with a wave sample, and
    /// no memory is taken for audio that a file merely claims to hold.
    [[noreturn]] static void DecodeUntilFailure(NSPorter::CMedia& media,
                                                const CLOP2SampleInfoChunk& info,
                                                CLOP2DecompressCallback& callback);

    /// Whether a stream of `byteCount` bytes can hold the audio of `info` at all: each sample takes
    /// at least one bit, and only whole 32-bit words are read.
    static bool CanHold(int64_t byteCount, const CLOP2SampleInfoChunk& info);
};

} // namespace NSLOPDLL

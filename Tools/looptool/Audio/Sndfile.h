#pragma once

#include "looptool/Audio/SAudio.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace NSLoopTool {

class COutputFile;

/// Whether the program was built with libsndfile.
bool HasSndfile();

/// Writes FLAC into an open file as the frames come. Into a pipe too: the header then lacks the
/// length, as of any encoder that writes to a pipe.
class CABCFlacEncoder {
public:
    virtual ~CABCFlacEncoder() = default;
    /// Interleaved samples at the top of 32 bits.
    virtual void Write(const int32_t* samples, size_t frames) = 0;
    virtual void Finish() = 0;
};

/// `bits` is 16 or 24; `name` is for messages. CToolFailure without libsndfile.
std::unique_ptr<CABCFlacEncoder> MakeFlacEncoder(COutputFile& output, const std::string& name,
                                                 int32_t rate, size_t channels, int32_t bits);

/// Bytes that the audio takes as FLAC; nothing without libsndfile.
std::optional<uint64_t> FlacSize(const SAudio& audio);

} // namespace NSLoopTool

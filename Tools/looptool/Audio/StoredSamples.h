#pragma once

#include "looptool/Audio/AudioReader.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace NSLoopTool {

/// A cursor over a file's bytes that knows how much is left.
class CByteCursor {
public:
    CByteCursor(const std::vector<uint8_t>& bytes, const std::string& name, bool isBigEndian)
        : fBytes(bytes), fName(name), fIsBigEndian(isBigEndian) {}

    size_t GetPosition() const { return fPosition; }
    size_t GetLeft() const { return fBytes.size() - fPosition; }
    /// Not beyond the end.
    void MoveTo(size_t position);
    void Skip(size_t count);
    /// An unsigned number of 1 to 8 bytes in the file's order.
    uint64_t Number(size_t width);
    std::string ID();
    [[noreturn]] void Fail(const std::string& what) const;

private:
    const std::vector<uint8_t>& fBytes;
    const std::string& fName;
    const bool fIsBigEndian;
    size_t fPosition = 0;
};

/// How the samples of a WAV or AIFF file are stored.
struct SStoredFormat {
    uint32_t fChannels = 0;
    uint32_t fRate = 0;
    uint32_t fBits = 0; // 8, 16, 24 or 32; of floats 32 or 64
    bool fIsFloat = false;
    bool fIsUnsigned = false; // of 8 bits
    bool fIsLittleEndian = true;

    bool IsReadable() const;
    size_t GetFrameBytes() const { return size_t{fChannels} * fBits / 8; }
};

/// Reads the frames at the cursor into `audio`. Fails for channels that no loop has, for a rate
/// that does not fit, and when fewer bytes are left than the frames need.
void ReadStoredSamples(const std::vector<uint8_t>& bytes, size_t position, uint64_t frames,
                       const SStoredFormat& format, const std::string& name,
                       const ProgressFunction& progress, SAudio& audio);

} // namespace NSLoopTool

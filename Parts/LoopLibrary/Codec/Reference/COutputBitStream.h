#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <memory>

namespace NSLOPDLL {

/// Assembles bits, most significant first, to 32-bit big-endian words and writes them to a media
/// through a buffer of 4096 bytes: the twin of `CInputBitStream`.
///
/// Failures of the media pass through, but for those of the destructor's flush, which are dropped:
/// a caller that must know calls `Flush` itself. Not thread-safe; the media must outlive the
/// stream.
class COutputBitStream {
public:
    explicit COutputBitStream(NSPorter::CMedia* media);
    /// Flushes first, and so writes one word even when nothing was added.
    virtual ~COutputBitStream();
    COutputBitStream(const COutputBitStream&) = delete;
    COutputBitStream& operator=(const COutputBitStream&) = delete;

    /// Appends the low `count` bits of `bits`, 1 to 32, the first being the most significant. A
    /// word that becomes full stands until the next bit needs its place.
    void WriteBits(uint32_t count, uint32_t bits);

    /// Puts the word under assembly into the buffer, as it stands, and makes it free again.
    void WriteWord();

    /// Writes the word under assembly, filled up with zeros, and all of the buffer to the media.
    /// Writes one word of zeros when nothing stands in the word.
    void Flush();

    /// Bits standing in the word under assembly; 0 when it is full.
    uint32_t GetBitsUsedInWord() const;

    /// Full words since the stream was made.
    int64_t GetWordsWritten() const;

private:
    NSPorter::CMedia* fMedia; // borrowed
    int64_t fStartPosition;
    uint32_t fBitsFree = 32;
    uint32_t fWord = 0; // its bits stand at the bottom
    std::unique_ptr<uint8_t[]> fBuffer;
    int32_t fBufferPosition = 0;
};

} // namespace NSLOPDLL

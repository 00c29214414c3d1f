#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <memory>

namespace NSLOPDLL {

/// Hands out the bits of a media, most significant first, from 32-bit big-endian words, through a
/// buffer of 4096 bytes.
///
/// The end of the media is not detected: the stream then goes on with what its buffer holds from
/// before, or with zeros. A caller that does not know how much to read asks `GetWordsConsumed`.
/// Failures of the media pass through. Not thread-safe; the media must outlive the stream, and its
/// cursor is the stream's while the stream lives.
class CInputBitStream {
public:
    /// Reads nothing: the first word is fetched by the first read.
    explicit CInputBitStream(NSPorter::CMedia* media);
    virtual ~CInputBitStream();
    CInputBitStream(const CInputBitStream&) = delete;
    CInputBitStream& operator=(const CInputBitStream&) = delete;

    /// Loads the next word. Called when no bit is left of the one before.
    void FillWord();

    /// The next bit, 0 or 1.
    uint32_t ReadBit() {
        if (fBitsLeft == 0) {
            FillWord();
        }
        const uint32_t bit = fWord >> 31;
        fWord <<= 1;
        --fBitsLeft;
        return bit;
    }

    /// The next `count` bits, 1 to 32, the first of them most significant.
    uint32_t ReadBits(uint32_t count);

    /// Drops `count` bits, 0 to 32, and so crosses at most one word boundary.
    void SkipBits(uint32_t count);

    /// The next read starts at the next word.
    void AlignToWord();

    /// Bits handed out of the current word; 0 when it is used up.
    uint32_t GetBitsUsedInWord() const;

    /// Words handed out whole. A word that is partly read does not count.
    int64_t GetWordsConsumed() const;

private:
    void DropBits(uint32_t count);

    NSPorter::CMedia* fMedia; // borrowed
    uint32_t fBitsLeft = 0;
    uint32_t fWord = 0; // the next bit is bit 31, zeros follow the last
    std::unique_ptr<uint8_t[]> fBuffer;
    int32_t fBufferPosition = 0;
    int64_t fBytesConsumed = 0;
};

} // namespace NSLOPDLL

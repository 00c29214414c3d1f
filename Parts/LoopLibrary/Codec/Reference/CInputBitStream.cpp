#include "LoopLibrary/Codec/Reference/CInputBitStream.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

constexpr int32_t kBufferSize = 4096;

} // namespace

// The buffer starts as zeros: an empty media delivers them.
CInputBitStream::CInputBitStream(NSPorter::CMedia* media)
    : fMedia(media), fBuffer(std::make_unique<uint8_t[]>(kBufferSize)) {}

CInputBitStream::~CInputBitStream() = default;

void CInputBitStream::FillWord() {
    fBufferPosition %= kBufferSize;
    if (fBufferPosition == 0) {
        const int64_t count = std::min<int64_t>(fMedia->BytesLeft(), kBufferSize);
        fMedia->Read(count, fBuffer.get());
    }
    fWord = NSPorter::DecodeBigEndian(fBuffer.get() + fBufferPosition);
    fBitsLeft = 32;
    fBytesConsumed += 4;
    fBufferPosition += 4;
}

uint32_t CInputBitStream::ReadBits(uint32_t count) {
    uint32_t bits = fWord >> (32 - count);
    if (count > fBitsLeft) {
        count -= fBitsLeft;
        fBitsLeft = 0;
        FillWord();
        bits |= fWord >> (32 - count);
    }
    DropBits(count);
    return bits;
}

void CInputBitStream::SkipBits(uint32_t count) {
    if (count > fBitsLeft) {
        count -= fBitsLeft;
        fBitsLeft = 0;
        FillWord();
    }
    DropBits(count);
}

// A shift by all 32 bits is not one that the language knows.
void CInputBitStream::DropBits(uint32_t count) {
    fWord = count < 32 ? fWord << count : 0;
    fBitsLeft -= count;
}

void CInputBitStream::AlignToWord() {
    fBitsLeft = 0;
    fWord = 0;
}

uint32_t CInputBitStream::GetBitsUsedInWord() const {
    return fBitsLeft == 0 ? 0 : 32 - fBitsLeft;
}

int64_t CInputBitStream::GetWordsConsumed() const {
    return fBytesConsumed / 4 - (fBitsLeft != 0 ? 1 : 0);
}

} // namespace NSLOPDLL

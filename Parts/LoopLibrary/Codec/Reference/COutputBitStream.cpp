#include "LoopLibrary/Codec/Reference/COutputBitStream.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"

namespace NSLOPDLL {

namespace {

constexpr int32_t kOutputBufferSize = 4096;

// What the language's shift does not do for a whole word.
uint32_t ShiftLeft(uint32_t word, uint32_t count) {
    return count < 32 ? word << count : 0;
}

} // namespace

COutputBitStream::COutputBitStream(NSPorter::CMedia* media)
    : fMedia(media), fStartPosition(media->GetPosition()),
      fBuffer(std::make_unique<uint8_t[]>(kOutputBufferSize)) {}

COutputBitStream::~COutputBitStream() {
    try {
        Flush();
    } catch (...) { // a destructor that throws would end the process
    }
}

// What lies above the bits in use in fWord is of no account: it is pushed out before the word is
// written.
void COutputBitStream::WriteBits(uint32_t count, uint32_t bits) {
    bits &= 0xFFFFFFFFu >> (32 - count);
    if (fBitsFree == 0) {
        WriteWord();
    }
    if (count > fBitsFree) {
        count -= fBitsFree;
        fWord = ShiftLeft(fWord, fBitsFree) | bits >> count;
        WriteWord();
    }
    fWord = ShiftLeft(fWord, count) | bits;
    fBitsFree -= count;
}

void COutputBitStream::WriteWord() {
    if (fBufferPosition == kOutputBufferSize) {
        fMedia->Write(kOutputBufferSize, fBuffer.get());
        fBufferPosition = 0;
    }
    NSPorter::EncodeBigEndian(fWord, fBuffer.get() + fBufferPosition);
    fBufferPosition += 4;
    fBitsFree = 32;
}

void COutputBitStream::Flush() {
    fWord = ShiftLeft(fWord, fBitsFree);
    WriteWord();
    if (fBufferPosition > 0) {
        fMedia->Write(fBufferPosition, fBuffer.get());
        fBufferPosition = 0;
    }
}

uint32_t COutputBitStream::GetBitsUsedInWord() const {
    return fBitsFree == 0 ? 0 : 32 - fBitsFree;
}

int64_t COutputBitStream::GetWordsWritten() const {
    return (fMedia->GetPosition() + fBufferPosition - fStartPosition) / 4 +
           (fBitsFree == 0 ? 1 : 0);
}

} // namespace NSLOPDLL

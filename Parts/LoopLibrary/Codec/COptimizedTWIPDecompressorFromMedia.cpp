#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"

#include "Failure/Raising/Raise.h"

#include <algorithm>
#include <stdexcept>

namespace NSLOPDLL {

namespace {

constexpr int32_t kBufferWords = 16384;

} // namespace

COptimizedTWIPDecompressorFromMedia::COptimizedTWIPDecompressorFromMedia(NSPorter::CMedia* media)
    : fMedia(media), fWordBuffer(new uint32_t[kBufferWords]) {}

COptimizedTWIPDecompressorFromMedia::~COptimizedTWIPDecompressorFromMedia() = default;

void COptimizedTWIPDecompressorFromMedia::Underflow() {
    const int64_t wordsLeft = fMedia->BytesLeft() / 4;
    if (wordsLeft < 1) {
        NSLichen::Raise(std::domain_error("bad format"));
    }
    const int32_t wordCount = static_cast<int32_t>(std::min<int64_t>(wordsLeft, kBufferWords));
    fMedia->Read(int64_t{wordCount} * 4, reinterpret_cast<uint8_t*>(fWordBuffer.get()));
    SetWords(wordCount, fWordBuffer.get());
}

} // namespace NSLOPDLL

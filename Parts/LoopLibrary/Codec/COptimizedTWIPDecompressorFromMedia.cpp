#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"

#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

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
    for (uint32_t* word = fWordBuffer.get(); word != fWordBuffer.get() + wordCount; ++word) {
        *word = NSPorter::DecodeBigEndian(reinterpret_cast<const uint8_t*>(word));
    }
    SetWords(wordCount, fWordBuffer.get());
}

} // namespace NSLOPDLL

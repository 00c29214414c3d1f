#pragma once

#include "LoopLibrary/Codec/COptimizedTWIPDecompressor.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <memory>

namespace NSLOPDLL {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The decoder over a media that stands at the first byte of a stream and extends to its end.
///
/// Reads ahead by up to 65536 bytes. When a bit is needed and fewer than 4 bytes remain, it throws
/// `std::domain_error` with "bad format"; failures of the media pass through.
class COptimizedTWIPDecompressorFromMedia final : public COptimizedTWIPDecompressor {
public:
    explicit COptimizedTWIPDecompressorFromMedia(NSPorter::CMedia* media);
    ~COptimizedTWIPDecompressorFromMedia();

private:
    void Underflow() override;

    NSPorter::CMedia* fMedia; // borrowed
    std::unique_ptr<uint32_t[]> fWordBuffer;
};

#pragma GCC diagnostic pop

} // namespace NSLOPDLL

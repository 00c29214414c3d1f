#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleDataChunk.h"

#include "Failure/Classes/XProgressErrors.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleInfoChunk.h"
#include "LoopLibrary/Render/Sample/C16BitWaveSample.h"
#include "LoopLibrary/Render/Sample/C24BitWaveSample.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace NSLOPDLL {

namespace {

// Calls decode(decompressor, first frame, frame count) for each block.
template <class Decode>
void DecodeBlocks(NSPorter::CMedia& media, uint32_t frames, CLOP2DecompressCallback& callback,
                  const Decode& decode) {
    COptimizedTWIPDecompressorFromMedia decompressor(&media);
    uint32_t position = 0;
    while (position < frames) {
        if (callback.ShouldStop(position)) {
            NSLichen::Raise(NSLichen::XAbort("stopped by callback"));
        }
        const uint32_t count =
            std::min<uint32_t>(frames - position, CLOP2SampleDataChunk::kBlockFrameLimit);
        decode(decompressor, position, static_cast<int32_t>(count));
        position += count;
    }
    callback.ShouldStop(position);
}

template <class WaveSample>
void DecodeInto(WaveSample& sample, NSPorter::CMedia& media, CLOP2DecompressCallback& callback) {
    using Value = typename WaveSample::Value;
    Value* const left = sample.Plane(kChannel_Left);
    Value* const right = sample.IsStereo() ? sample.Plane(kChannel_Right) : nullptr;
    DecodeBlocks(media, sample.GetFrameCount(), callback,
                 [&](COptimizedTWIPDecompressor& decompressor, uint32_t first, int32_t count) {
                     decompressor.DecompressPlanes(count, left + first,
                                                   right == nullptr ? right : right + first);
                 });
}

} // namespace

CLOP2SampleDataChunk::CLOP2SampleDataChunk(NSPorter::CMedia& media, CABCWaveSample& waveSample,
                                           CLOP2DecompressCallback& callback) {
    if (waveSample.GetBitDepth() == 16) {
        DecodeInto(dynamic_cast<C16BitWaveSample&>(waveSample), media, callback);
    } else {
        DecodeInto(dynamic_cast<C24BitWaveSample&>(waveSample), media, callback);
    }
}

void CLOP2SampleDataChunk::DecodeUntilFailure(NSPorter::CMedia& media,
                                              const CLOP2SampleInfoChunk& info,
                                              CLOP2DecompressCallback& callback) {
    const auto frames = static_cast<uint32_t>(info.GetFrames());
    const size_t blockFrames = std::min<uint32_t>(frames, kBlockFrameLimit);
    const auto left = std::make_unique_for_overwrite<int16_t[]>(blockFrames);
    const auto right =
        info.IsStereo() ? std::make_unique_for_overwrite<int16_t[]>(blockFrames) : nullptr;
    DecodeBlocks(media, frames, callback,
                 [&](COptimizedTWIPDecompressor& decompressor, uint32_t, int32_t count) {
                     decompressor.DecompressPlanes(count, left.get(), right.get());
                 });
    // Not reached: each sample takes at least a bit, and the stream has fewer bits than samples.
    NSLichen::Raise(std::domain_error("bad format"));
}

bool CLOP2SampleDataChunk::CanHold(int64_t byteCount, const CLOP2SampleInfoChunk& info) {
    return int64_t{info.GetFrames()} * info.GetChannels() <= byteCount / 4 * 32;
}

} // namespace NSLOPDLL

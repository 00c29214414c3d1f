#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleDataChunk.h"

#include "Failure/Classes/XProgressErrors.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/LOP2/Chunks/CLOP2SampleInfoChunk.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace NSLOPDLL {

namespace {

// Calls store(first frame, frame count, samples) for each block; stereo samples are interleaved.
template <class Sample, class Store>
void DecodeBlocks(NSPorter::CMedia& media, uint32_t frames, bool isStereo,
                  CLOP2DecompressCallback& callback, const Store& store) {
    COptimizedTWIPDecompressorFromMedia decompressor(&media);
    const uint32_t largestBlock =
        std::min<uint32_t>(frames, CLOP2SampleDataChunk::kBlockFrameLimit);
    const auto block =
        std::make_unique_for_overwrite<Sample[]>(size_t{largestBlock} * (isStereo ? 2 : 1));
    int16_t* out16 = nullptr;
    int32_t* out32 = nullptr;
    if constexpr (std::is_same_v<Sample, int16_t>) {
        out16 = block.get();
    } else {
        out32 = block.get();
    }

    uint32_t position = 0;
    while (position < frames) {
        if (callback.ShouldStop(position)) {
            NSLichen::Raise(NSLichen::XAbort("stopped by callback"));
        }
        const auto count = static_cast<int32_t>(std::min(frames - position, largestBlock));
        if (isStereo) {
            decompressor.DecompressStereo(count, out16, out32);
        } else {
            decompressor.DecompressMono(count, out16, out32);
        }
        store(static_cast<int32_t>(position), count, block.get());
        position += static_cast<uint32_t>(count);
    }
    callback.ShouldStop(position);
}

} // namespace

CLOP2SampleDataChunk::CLOP2SampleDataChunk(NSPorter::CMedia& media, CABCWaveSample& waveSample,
                                           CLOP2DecompressCallback& callback) {
    const uint32_t frames = waveSample.GetFrameCount();
    const bool isStereo = waveSample.IsStereo();
    if (waveSample.GetBitDepth() == 16) {
        DecodeBlocks<int16_t>(media, frames, isStereo, callback,
                              [&](int32_t first, int32_t count, const int16_t* samples) {
                                  if (isStereo) {
                                      waveSample.Set16BitFrames(first, count, samples);
                                  } else {
                                      waveSample.Set16BitSamples(first, count, samples,
                                                                 kChannel_Left);
                                  }
                              });
    } else {
        DecodeBlocks<int32_t>(media, frames, isStereo, callback,
                              [&](int32_t first, int32_t count, const int32_t* samples) {
                                  if (isStereo) {
                                      waveSample.Set24BitFrames(first, count, samples);
                                  } else {
                                      waveSample.Set24BitSamples(first, count, samples,
                                                                 kChannel_Left);
                                  }
                              });
    }
}

void CLOP2SampleDataChunk::DecodeUntilFailure(NSPorter::CMedia& media,
                                              const CLOP2SampleInfoChunk& info,
                                              CLOP2DecompressCallback& callback) {
    DecodeBlocks<int16_t>(media, static_cast<uint32_t>(info.GetFrames()), info.IsStereo(), callback,
                          [](int32_t, int32_t, const int16_t*) {});
    // Not reached: each sample takes at least a bit, and the stream has fewer bits than samples.
    NSLichen::Raise(std::domain_error("bad format"));
}

bool CLOP2SampleDataChunk::CanHold(int64_t byteCount, const CLOP2SampleInfoChunk& info) {
    return int64_t{info.GetFrames()} * info.GetChannels() <= byteCount / 4 * 32;
}

} // namespace NSLOPDLL

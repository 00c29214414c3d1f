#include "LoopLibrary/Render/Sample/ReadSamples.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

namespace {

// The values, frames times channels, that are read at once.
constexpr int32_t kLotValues = 2048;
constexpr int32_t kWidestSample = 3;

// The result is on the 24-bit scale, which takes the place of whatever bytes are missing.
int32_t DecodeSample(const uint8_t* bytes, int32_t bytesPerSample) {
    uint32_t value = 0;
    for (int32_t i = 0; i < kWidestSample; ++i) {
        value = (value << 8) | (i < bytesPerSample ? bytes[i] : 0U);
    }
    return static_cast<int32_t>(value << 8) >> 8;
}

} // namespace

int32_t GetBytesPerSample(int32_t bitDepth) noexcept {
    switch (bitDepth) {
    case 8:
        return 1;
    case 16:
        return 2;
    case 20:
    case 22:
    case 24:
        return 3;
    default:
        return 0;
    }
}

void ReadSamples(NSPorter::CMedia& media, int32_t channels, int32_t bitDepth, int64_t frames,
                 float* out) {
    const int32_t bytesPerSample = GetBytesPerSample(bitDepth);
    if (bytesPerSample == 0) {
        NSLichen::Raise(NSLichen::XFormatViolation("bad bytes/frame"));
    }
    if (channels < 1 || channels > kLotValues) {
        NSLichen::Raise(NSLichen::XFormatViolation("bad CWaveSampleInfo format"));
    }
    const int64_t framesPerLot = kLotValues / channels;
    std::array<uint8_t, size_t{kLotValues} * kWidestSample> lot{};
    while (frames > 0) {
        const int64_t lotFrames = std::min(frames, framesPerLot);
        const int64_t values = lotFrames * channels;
        const int64_t byteCount = values * bytesPerSample;
        // The sizes in the file promise nothing about the media.
        if (byteCount > media.BytesLeft()) {
            NSLichen::Raise(NSLichen::XFormatViolation(""));
        }
        media.Read(byteCount, lot.data());
        for (int64_t i = 0; i < values; ++i) {
            out[i] = static_cast<float>(
                DecodeSample(&lot[static_cast<size_t>(i * bytesPerSample)], bytesPerSample));
        }
        out += values;
        frames -= lotFrames;
    }
}

} // namespace NSLOPDLL

#include "looptool/Audio/StoredSamples.h"

#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace NSLoopTool {

namespace {

int32_t FromFloat(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int32_t>(std::lround(std::clamp(value * 8388608.0, -8388608.0, 8388607.0)));
}

// One stored sample, its bits at the bottom of `bits`, at the depth that is kept.
int32_t KeptSample(uint64_t bits, const SStoredFormat& format) {
    if (format.fIsFloat) {
        return FromFloat(format.fBits == 32 ? static_cast<double>(
                                                  std::bit_cast<float>(static_cast<uint32_t>(bits)))
                                            : std::bit_cast<double>(bits));
    }
    const auto top = static_cast<int32_t>(static_cast<uint32_t>(bits) << (32 - format.fBits));
    switch (format.fBits) {
    case 8:
        return (format.fIsUnsigned ? static_cast<int32_t>(bits) - 128 : top >> 24) * 256;
    case 16:
        return top >> 16;
    default:
        return top >> 8;
    }
}

} // namespace

void CByteCursor::MoveTo(size_t position) {
    fPosition = std::min(position, fBytes.size());
}

void CByteCursor::Skip(size_t count) {
    fPosition += std::min(count, GetLeft());
}

uint64_t CByteCursor::Number(size_t width) {
    if (width > GetLeft()) {
        Fail("it ends early");
    }
    uint64_t value = 0;
    for (size_t i = 0; i < width; ++i) {
        const size_t shift = 8 * (fIsBigEndian ? width - 1 - i : i);
        value |= static_cast<uint64_t>(fBytes[fPosition + i]) << shift;
    }
    fPosition += width;
    return value;
}

std::string CByteCursor::ID() {
    std::string id(4, ' ');
    for (char& letter : id) {
        letter = static_cast<char>(Number(1));
    }
    return id;
}

void CByteCursor::Fail(const std::string& what) const {
    throw CToolFailure(fName + ": cannot be read: " + what);
}

bool SStoredFormat::IsReadable() const {
    if (fIsFloat) {
        return fBits == 32 || fBits == 64;
    }
    return fBits == 8 || fBits == 16 || fBits == 24 || fBits == 32;
}

void ReadStoredSamples(const std::vector<uint8_t>& bytes, size_t position, uint64_t frames,
                       const SStoredFormat& format, const std::string& name,
                       const ProgressFunction& progress, SAudio& audio) {
    if (format.fChannels < 1 || format.fChannels > 2) {
        throw CToolFailure(name + ": has " + std::to_string(format.fChannels) +
                           " channels; a loop has 1 or 2");
    }
    CByteCursor cursor(bytes, name, !format.fIsLittleEndian);
    if (format.fRate < 1 ||
        format.fRate > static_cast<uint32_t>(std::numeric_limits<int32_t>::max())) {
        cursor.Fail("its sample rate is out of range");
    }
    cursor.MoveTo(position);
    const size_t there = cursor.GetLeft() / format.GetFrameBytes();
    if (frames > there) {
        throw CToolFailure(name + ": is cut short: it says " + std::to_string(frames) +
                           " frames and holds " + std::to_string(there));
    }
    audio.fSampleRate = static_cast<int32_t>(format.fRate);
    audio.fBitDepth = !format.fIsFloat && format.fBits <= 16 ? 16 : 24;
    audio.fPlanes.assign(format.fChannels, std::vector<int32_t>(static_cast<size_t>(frames)));
    for (size_t frame = 0; frame < frames; ++frame) {
        for (std::vector<int32_t>& plane : audio.fPlanes) {
            plane[frame] = KeptSample(cursor.Number(format.fBits / 8), format);
        }
        if (frame % kLotFrames == 0) {
            StopIfInterrupted();
            progress(static_cast<int64_t>(frame * 100 / frames));
        }
    }
}

} // namespace NSLoopTool

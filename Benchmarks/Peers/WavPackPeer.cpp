#include "Benchmarks/Peers/DecoderPeers.h"

#include <wavpack/wavpack.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace LoopBench {

namespace {

int Append(void* id, void* data, int32_t count) {
    auto& all = *static_cast<Bytes*>(id);
    const auto* bytes = static_cast<const uint8_t*>(data);
    all.insert(all.end(), bytes, bytes + count);
    return 1;
}

// Frames of all channels beside each other.
std::vector<int32_t> Interleave(const SClip& clip) {
    std::vector<int32_t> samples;
    for (size_t i = 0; i < clip.fLeft.size(); ++i) {
        samples.push_back(clip.fLeft[i]);
        if (clip.IsStereo()) {
            samples.push_back(clip.fRight[i]);
        }
    }
    return samples;
}

Bytes Encode(const SClip& clip, int flags) {
    Bytes bytes;
    WavpackContext* const context = WavpackOpenFileOutput(Append, &bytes, nullptr);
    WavpackConfig config{};
    config.bytes_per_sample = clip.fBitDepth / 8;
    config.bits_per_sample = clip.fBitDepth;
    config.num_channels = clip.GetChannelCount();
    config.channel_mask = clip.IsStereo() ? 3 : 4;
    config.sample_rate = clip.fSampleRate;
    config.flags = flags;
    std::vector<int32_t> samples = Interleave(clip);
    const bool done =
        WavpackSetConfiguration64(context, &config, clip.GetFrameCount(), nullptr) != 0 &&
        WavpackPackInit(context) != 0 &&
        WavpackPackSamples(context, samples.data(), static_cast<uint32_t>(clip.GetFrameCount())) !=
            0 &&
        WavpackFlushSamples(context) != 0;
    WavpackCloseFile(context);
    if (!done) {
        throw std::runtime_error("WavPack cannot encode " + clip.fName);
    }
    return bytes;
}

// The library reads through these; what it asks of a stream that nobody seeks in is little.
struct SReading {
    const Bytes& fBytes;
    size_t fPosition = 0;
};

SReading& Of(void* id) {
    return *static_cast<SReading*>(id);
}

int32_t Read(void* id, void* data, int32_t count) {
    SReading& reading = Of(id);
    const size_t taken =
        std::min(static_cast<size_t>(count), reading.fBytes.size() - reading.fPosition);
    std::memcpy(data, reading.fBytes.data() + reading.fPosition, taken);
    reading.fPosition += taken;
    return static_cast<int32_t>(taken);
}

WavpackStreamReader64 MakeReader() {
    WavpackStreamReader64 reader{};
    reader.read_bytes = Read;
    reader.get_pos = [](void* id) { return static_cast<int64_t>(Of(id).fPosition); };
    reader.set_pos_abs = [](void* id, int64_t position) {
        Of(id).fPosition = static_cast<size_t>(position);
        return 0;
    };
    reader.set_pos_rel = [](void* id, int64_t delta, int mode) {
        const size_t from = mode == SEEK_SET   ? 0
                            : mode == SEEK_CUR ? Of(id).fPosition
                                               : Of(id).fBytes.size();
        Of(id).fPosition = from + static_cast<size_t>(delta);
        return 0;
    };
    reader.push_back_byte = [](void* id, int byte) {
        --Of(id).fPosition;
        return byte;
    };
    reader.get_length = [](void* id) { return static_cast<int64_t>(Of(id).fBytes.size()); };
    reader.can_seek = [](void*) { return 0; };
    return reader;
}

void Decode(const Bytes& bytes, const SClip& shape, SClip* store) {
    constexpr uint32_t kFrames = 4096;
    static WavpackStreamReader64 reader = MakeReader();
    SReading reading{bytes};
    char error[81];
    WavpackContext* const context =
        WavpackOpenFileInputEx64(&reader, &reading, nullptr, error, 0, 0);
    if (context == nullptr) {
        throw std::runtime_error(error);
    }
    int32_t samples[2 * kFrames];
    while (const uint32_t count = WavpackUnpackSamples(context, samples, kFrames)) {
        for (uint32_t i = 0; store != nullptr && i < count; ++i) {
            if (shape.IsStereo()) {
                store->fLeft.push_back(samples[2 * i]);
                store->fRight.push_back(samples[2 * i + 1]);
            } else {
                store->fLeft.push_back(samples[i]);
            }
        }
    }
    WavpackCloseFile(context);
}

} // namespace

SDecoderPeer WavPackPeer(const std::string& options) {
    const int flags = options == "-f" ? CONFIG_FAST_FLAG : options == "-h" ? CONFIG_HIGH_FLAG : 0;
    return {"libwavpack" + (options.empty() ? "" : " " + options),
            [flags](const SClip& clip) { return Encode(clip, flags); }, Decode};
}

} // namespace LoopBench

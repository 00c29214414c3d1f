#include "Benchmarks/Peers/DecoderPeers.h"

#include <FLAC/stream_decoder.h>
#include <FLAC/stream_encoder.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace LoopBench {

namespace {

FLAC__StreamEncoderWriteStatus Append(const FLAC__StreamEncoder*, const FLAC__byte* bytes,
                                      size_t count, uint32_t, uint32_t, void* client) {
    auto& all = *static_cast<Bytes*>(client);
    all.insert(all.end(), bytes, bytes + count);
    return FLAC__STREAM_ENCODER_WRITE_STATUS_OK;
}

Bytes Encode(const SClip& clip, int level) {
    Bytes bytes;
    FLAC__StreamEncoder* const encoder = FLAC__stream_encoder_new();
    FLAC__stream_encoder_set_channels(encoder, static_cast<uint32_t>(clip.GetChannelCount()));
    FLAC__stream_encoder_set_bits_per_sample(encoder, static_cast<uint32_t>(clip.fBitDepth));
    FLAC__stream_encoder_set_sample_rate(encoder, static_cast<uint32_t>(clip.fSampleRate));
    FLAC__stream_encoder_set_compression_level(encoder, static_cast<uint32_t>(level));
    FLAC__stream_encoder_init_stream(encoder, Append, nullptr, nullptr, nullptr, &bytes);
    const FLAC__int32* const planes[] = {clip.fLeft.data(), clip.fRight.data()};
    const bool done = FLAC__stream_encoder_process(encoder, planes,
                                                   static_cast<uint32_t>(clip.GetFrameCount())) &&
                      FLAC__stream_encoder_finish(encoder);
    FLAC__stream_encoder_delete(encoder);
    if (!done) {
        throw std::runtime_error("FLAC cannot encode " + clip.fName);
    }
    return bytes;
}

struct SReading {
    const Bytes& fBytes;
    size_t fPosition = 0;
    SClip* fStore = nullptr;
};

FLAC__StreamDecoderReadStatus Read(const FLAC__StreamDecoder*, FLAC__byte* bytes, size_t* count,
                                   void* client) {
    auto& reading = *static_cast<SReading*>(client);
    *count = std::min(*count, reading.fBytes.size() - reading.fPosition);
    std::memcpy(bytes, reading.fBytes.data() + reading.fPosition, *count);
    reading.fPosition += *count;
    return *count != 0 ? FLAC__STREAM_DECODER_READ_STATUS_CONTINUE
                       : FLAC__STREAM_DECODER_READ_STATUS_END_OF_STREAM;
}

FLAC__StreamDecoderWriteStatus Write(const FLAC__StreamDecoder*, const FLAC__Frame* frame,
                                     const FLAC__int32* const planes[], void* client) {
    SClip* const store = static_cast<SReading*>(client)->fStore;
    if (store != nullptr) {
        const uint32_t count = frame->header.blocksize;
        store->fLeft.insert(store->fLeft.end(), planes[0], planes[0] + count);
        if (frame->header.channels > 1) {
            store->fRight.insert(store->fRight.end(), planes[1], planes[1] + count);
        }
    }
    return FLAC__STREAM_DECODER_WRITE_STATUS_CONTINUE;
}

void Fail(const FLAC__StreamDecoder*, FLAC__StreamDecoderErrorStatus, void*) {}

void Decode(const Bytes& bytes, SClip* store) {
    SReading reading{bytes, 0, store};
    FLAC__StreamDecoder* const decoder = FLAC__stream_decoder_new();
    FLAC__stream_decoder_init_stream(decoder, Read, nullptr, nullptr, nullptr, nullptr, Write,
                                     nullptr, Fail, &reading);
    FLAC__stream_decoder_process_until_end_of_stream(decoder);
    FLAC__stream_decoder_delete(decoder);
}

} // namespace

SDecoderPeer FlacPeer(int level) {
    return {"libFLAC -" + std::to_string(level),
            [level](const SClip& clip) { return Encode(clip, level); },
            [](const Bytes& bytes, const SClip&, SClip* store) { Decode(bytes, store); }};
}

} // namespace LoopBench

#include "Benchmarks/Peers/DecoderPeers.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace LoopBench {

namespace {

struct SFree {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using Context = std::unique_ptr<AVCodecContext, SFree>;
using Frame = std::unique_ptr<AVFrame, SFree>;
using Packet = std::unique_ptr<AVPacket, SFree>;

void Check(int result, const char* what) {
    if (result < 0) {
        throw std::runtime_error(std::string("libavcodec: ") + what);
    }
}

// 24 bits stand in the upper bits of 32.
int32_t ShiftOf(const SClip& shape) {
    return shape.fBitDepth == 24 ? 8 : 0;
}

Context MakeContext(const AVCodec* codec, const SClip& shape, AVSampleFormat format) {
    Context context(avcodec_alloc_context3(codec));
    av_channel_layout_default(&context->ch_layout, shape.GetChannelCount());
    context->sample_rate = shape.fSampleRate;
    context->sample_fmt = format;
    context->bits_per_raw_sample = shape.fBitDepth;
    context->bits_per_coded_sample = shape.fBitDepth;
    context->thread_count = 1;
    return context;
}

AVSampleFormat FormatFor(const AVCodec* codec, const SClip& shape) {
    for (const AVSampleFormat* format = codec->sample_fmts; *format != AV_SAMPLE_FMT_NONE;
         ++format) {
        if (av_get_bytes_per_sample(*format) == (shape.fBitDepth == 16 ? 2 : 4)) {
            return *format;
        }
    }
    throw std::runtime_error("libavcodec: no format for this depth");
}

template <class Sample>
Sample& At(AVFrame& frame, int32_t channel, int32_t index) {
    const bool planar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    auto* const plane = reinterpret_cast<Sample*>(frame.extended_data[planar ? channel : 0]);
    return plane[planar ? index : index * frame.ch_layout.nb_channels + channel];
}

// Packets, each behind its size in four bytes, and first what the decoder wants to know ahead.
struct SPackets {
    Bytes& fBytes;
    void Append(const uint8_t* data, int size) {
        const auto count = static_cast<uint32_t>(size);
        const auto* head = reinterpret_cast<const uint8_t*>(&count);
        fBytes.insert(fBytes.end(), head, head + sizeof count);
        fBytes.insert(fBytes.end(), data, data + count);
        fBytes.insert(fBytes.end(), AV_INPUT_BUFFER_PADDING_SIZE, 0);
    }
    // The data of the packet at `position`, which moves behind it.
    static uint8_t* Take(const Bytes& bytes, size_t& position, int& size) {
        uint32_t count = 0;
        std::memcpy(&count, &bytes[position], sizeof count);
        size = static_cast<int>(count);
        auto* const data = const_cast<uint8_t*>(&bytes[position + sizeof count]);
        position += sizeof count + count + AV_INPUT_BUFFER_PADDING_SIZE;
        return data;
    }
};

// The head of a TTA file, which its decoder asks for and its encoder leaves to the file's writer.
// The checksum at its end is not looked at.
Bytes HeadOfTTA(const SClip& clip) {
    Bytes head = {'T', 'T', 'A', '1'};
    const auto append = [&](int32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            head.push_back(static_cast<uint8_t>(value >> (8 * i)));
        }
    };
    append(1, 2);
    append(clip.GetChannelCount(), 2);
    append(clip.fBitDepth, 2);
    append(clip.fSampleRate, 4);
    append(clip.GetFrameCount(), 4);
    append(0, 4);
    return head;
}

Bytes Encode(const AVCodec* codec, const SClip& clip) {
    Context context = MakeContext(codec, clip, FormatFor(codec, clip));
    Check(avcodec_open2(context.get(), codec, nullptr), "opening an encoder");
    Bytes bytes;
    SPackets packets{bytes};
    const Bytes tta = HeadOfTTA(clip);
    const bool isTTA = codec->id == AV_CODEC_ID_TTA;
    packets.Append(isTTA ? tta.data() : context->extradata,
                   isTTA ? static_cast<int>(tta.size()) : context->extradata_size);
    Packet packet(av_packet_alloc());
    const auto drain = [&] {
        while (avcodec_receive_packet(context.get(), packet.get()) == 0) {
            packets.Append(packet->data, packet->size);
            av_packet_unref(packet.get());
        }
    };
    for (int32_t first = 0; first < clip.GetFrameCount(); first += context->frame_size) {
        Frame frame(av_frame_alloc());
        frame->nb_samples = std::min(context->frame_size, clip.GetFrameCount() - first);
        frame->format = context->sample_fmt;
        av_channel_layout_copy(&frame->ch_layout, &context->ch_layout);
        Check(av_frame_get_buffer(frame.get(), 0), "making a frame");
        for (int32_t channel = 0; channel < clip.GetChannelCount(); ++channel) {
            const auto& plane = channel == 0 ? clip.fLeft : clip.fRight;
            for (int32_t i = 0; i < frame->nb_samples; ++i) {
                const int32_t sample = plane[static_cast<size_t>(first + i)] * (1 << ShiftOf(clip));
                if (clip.fBitDepth == 16) {
                    At<int16_t>(*frame, channel, i) = static_cast<int16_t>(sample);
                } else {
                    At<int32_t>(*frame, channel, i) = sample;
                }
            }
        }
        Check(avcodec_send_frame(context.get(), frame.get()), "encoding");
        drain();
    }
    Check(avcodec_send_frame(context.get(), nullptr), "encoding");
    drain();
    return bytes;
}

void Keep(AVFrame& frame, const SClip& shape, SClip& store) {
    for (int32_t channel = 0; channel < shape.GetChannelCount(); ++channel) {
        auto& plane = channel == 0 ? store.fLeft : store.fRight;
        for (int32_t i = 0; i < frame.nb_samples; ++i) {
            plane.push_back(shape.fBitDepth == 16
                                ? At<int16_t>(frame, channel, i)
                                : At<int32_t>(frame, channel, i) >> ShiftOf(shape));
        }
    }
}

void Decode(const AVCodec* codec, const Bytes& bytes, const SClip& shape, SClip* store) {
    Context context = MakeContext(codec, shape, AV_SAMPLE_FMT_NONE);
    size_t position = 0;
    int size = 0;
    const uint8_t* const ahead = SPackets::Take(bytes, position, size);
    context->extradata =
        static_cast<uint8_t*>(av_mallocz(static_cast<size_t>(size) + AV_INPUT_BUFFER_PADDING_SIZE));
    context->extradata_size = size;
    std::memcpy(context->extradata, ahead, static_cast<size_t>(size));
    Check(avcodec_open2(context.get(), codec, nullptr), "opening a decoder");
    Packet packet(av_packet_alloc());
    Frame frame(av_frame_alloc());
    while (position < bytes.size()) {
        packet->data = SPackets::Take(bytes, position, packet->size);
        Check(avcodec_send_packet(context.get(), packet.get()), "decoding");
        while (avcodec_receive_frame(context.get(), frame.get()) == 0) {
            if (store != nullptr) {
                Keep(*frame, shape, *store);
            }
        }
    }
}

} // namespace

SDecoderPeer AvcodecPeer(const std::string& codec) {
    const AVCodec* const encoder = avcodec_find_encoder_by_name(codec.c_str());
    const AVCodec* const decoder = avcodec_find_decoder_by_name(codec.c_str());
    if (encoder == nullptr || decoder == nullptr) {
        throw std::runtime_error("libavcodec has no codec " + codec);
    }
    return {"libavcodec " + codec, [encoder](const SClip& clip) { return Encode(encoder, clip); },
            [decoder](const Bytes& bytes, const SClip& shape, SClip* store) {
                Decode(decoder, bytes, shape, store);
            }};
}

} // namespace LoopBench

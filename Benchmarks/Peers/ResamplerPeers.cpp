#include "Benchmarks/Contest/CContest.h"
#include "Benchmarks/Peers/VoicePeers.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}
#include <samplerate.h>

#include <cmath>
#include <memory>
#include <stdexcept>

namespace LoopBench {

namespace {

constexpr int kFromRate = 44100;
constexpr int kToRate = 48000;
constexpr int kFrames = 7526; // in, 8192 out

std::vector<float> MakeSignal() {
    std::vector<float> signal(kFrames);
    for (size_t i = 0; i < signal.size(); ++i) {
        signal[i] = static_cast<float>(std::sin(static_cast<double>(i) * 0.01));
    }
    return signal;
}

} // namespace

SVoicePeer SwresampleStream() {
    AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
    SwrContext* context = nullptr;
    swr_alloc_set_opts2(&context, &mono, AV_SAMPLE_FMT_FLTP, kToRate, &mono, AV_SAMPLE_FMT_FLTP,
                        kFromRate, 0, nullptr);
    av_opt_set_int(context, "filter_size", 8, 0);
    if (swr_init(context) < 0) {
        throw std::runtime_error("libswresample cannot be opened");
    }
    const std::shared_ptr<SwrContext> owner(context, [](SwrContext* one) { swr_free(&one); });
    return {"libswresample, 8 taps", 8192.0, [owner, in = MakeSignal()] {
                std::vector<float> out(2 * kFrames);
                const auto* source = reinterpret_cast<const uint8_t*>(in.data());
                auto* target = reinterpret_cast<uint8_t*>(out.data());
                const double start = ThreadSeconds();
                const int frames = swr_convert(owner.get(), &target, 2 * kFrames, &source, kFrames);
                const double seconds = ThreadSeconds() - start;
                return frames > 0 ? seconds * 8192.0 / frames : seconds;
            }};
}

SVoicePeer SamplerateStream() {
    int error = 0;
    const std::shared_ptr<SRC_STATE> state(src_new(SRC_SINC_FASTEST, 1, &error), src_delete);
    return {"libsamplerate, fastest kernel", 8192.0, [state, in = MakeSignal()] {
                std::vector<float> out(2 * kFrames);
                SRC_DATA data{};
                data.data_in = in.data();
                data.input_frames = kFrames;
                data.data_out = out.data();
                data.output_frames = 2 * kFrames;
                data.src_ratio = static_cast<double>(kToRate) / kFromRate;
                const double start = ThreadSeconds();
                src_process(state.get(), &data);
                const double seconds = ThreadSeconds() - start;
                const auto frames = static_cast<double>(data.output_frames_gen);
                return frames > 0 ? seconds * 8192.0 / frames : seconds;
            }};
}

} // namespace LoopBench

#include "Benchmarks/Contest/Audio.h"

#include "LoopWriter/SyntheticLoop.h"

#include <samplerate.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace LoopBench {

namespace {

constexpr int32_t kMostFrames = 400000; // of a clip

SClip ReadRecording(const std::string& name) {
    const std::string path = "/usr/share/sonic-pi/samples/" + name + ".flac";
    SF_INFO info{};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr) {
        throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    }
    const auto frames = static_cast<size_t>(std::min<sf_count_t>(info.frames, kMostFrames));
    const auto channels = static_cast<size_t>(info.channels);
    std::vector<int> samples(frames * channels);
    sf_readf_int(file, samples.data(), static_cast<sf_count_t>(frames));
    sf_close(file);
    SClip clip{name, 16, info.samplerate, {}, {}};
    for (size_t frame = 0; frame < frames; ++frame) {
        clip.fLeft.push_back(samples[frame * channels] >> 16);
        if (channels > 1) {
            clip.fRight.push_back(samples[frame * channels + 1] >> 16);
        }
    }
    return clip;
}

// A resampler's output fills all 24 bits, as a 24-bit recording does.
std::vector<int32_t> Resample(const std::vector<int32_t>& plane, double ratio) {
    std::vector<float> in(plane.size());
    std::transform(plane.begin(), plane.end(), in.begin(),
                   [](int32_t sample) { return static_cast<float>(sample) * 0.8F / 32768.0F; });
    std::vector<float> out(static_cast<size_t>(static_cast<double>(plane.size()) * ratio) + 16);
    SRC_DATA data{};
    data.data_in = in.data();
    data.input_frames = static_cast<long>(in.size());
    data.data_out = out.data();
    data.output_frames = static_cast<long>(out.size());
    data.src_ratio = ratio;
    if (src_simple(&data, SRC_SINC_MEDIUM_QUALITY, 1) != 0) {
        throw std::runtime_error("resampling failed");
    }
    std::vector<int32_t> resampled(static_cast<size_t>(data.output_frames_gen));
    std::transform(out.begin(), out.begin() + data.output_frames_gen, resampled.begin(),
                   [](float sample) {
                       return std::clamp(static_cast<int32_t>(std::lround(sample * 8388608.0F)),
                                         -8388608, 8388607);
                   });
    return resampled;
}

SClip To24Bits(const SClip& clip) {
    constexpr int32_t kRate = 48000;
    const double ratio = static_cast<double>(kRate) / clip.fSampleRate;
    return {clip.fName, 24, kRate, Resample(clip.fLeft, ratio), Resample(clip.fRight, ratio)};
}

} // namespace

double SClipSet::CountSamples() const {
    double samples = 0;
    for (const SClip& clip : fClips) {
        samples += static_cast<double>(clip.fLeft.size() + clip.fRight.size());
    }
    return samples;
}

std::vector<SClipSet> MakeClipSets(bool quick) {
    std::vector<std::string> names = {"loop_amen_full",  "loop_breakbeat", "loop_compus",
                                      "loop_industrial", "loop_mika",      "loop_tabla",
                                      "loop_garzul",     "loop_safari",    "loop_electric"};
    names.resize(quick ? 4 : names.size());
    SClipSet stereo{"stereo loops, 16 bits", {}};
    SClipSet wide{"stereo loops, 24 bits", {}};
    SClipSet mono{"mono loops, 16 bits", {}};
    for (const std::string& name : names) {
        stereo.fClips.push_back(ReadRecording(name));
        wide.fClips.push_back(To24Bits(stereo.fClips.back()));
        mono.fClips.push_back(stereo.fClips.back());
        mono.fClips.back().fRight.clear();
    }
    using NSLoopWriter::MakeNoise;
    constexpr size_t kFrames = 300000;
    const SClip noise{"noise", 16, 44100, MakeNoise(kFrames, 16, 1), MakeNoise(kFrames, 16, 2)};
    const SClip silence{"silence", 16, 44100, std::vector<int32_t>(kFrames * 4),
                        std::vector<int32_t>(kFrames * 4)};
    return {stereo,
            wide,
            mono,
            {"noise, stereo, 16 bits", {noise}},
            {"digital silence, stereo, 16 bits", {silence}}};
}

} // namespace LoopBench

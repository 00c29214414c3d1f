#include "Benchmarks/Contest/CContest.h"
#include "Benchmarks/Peers/VoicePeers.h"

#include <fluidsynth.h>
#include <libopenmpt/libopenmpt.h>

#include <array>
#include <cmath>
#include <memory>
#include <stdexcept>

namespace LoopBench {

namespace {

constexpr int kVoices = 8;
constexpr int kRate = 48000;
constexpr int kFrames = 8192; // of one turn

struct SOutput {
    std::array<float, kFrames> fLeft{};
    std::array<float, kFrames> fRight{};
};

// Answers what `loud` takes longer than `silent`, and refuses when nothing sounds.
template <class Render>
double TimeVoices(const Render& renderLoud, const Render& renderSilent) {
    SOutput output;
    const double start = ThreadSeconds();
    renderSilent(output);
    const double middle = ThreadSeconds();
    renderLoud(output);
    const double end = ThreadSeconds();
    double sum = 0;
    for (const float value : output.fLeft) {
        sum += std::abs(static_cast<double>(value));
    }
    if (sum == 0) {
        throw std::runtime_error("a peer is silent");
    }
    return end - middle - (middle - start);
}

void AppendBigEndian16(std::vector<uint8_t>& bytes, int value) {
    bytes.push_back(static_cast<uint8_t>(value >> 8));
    bytes.push_back(static_cast<uint8_t>(value));
}

// One pattern; in its first row each of `voices` channels starts the one sample, which loops.
std::vector<uint8_t> MakeModule(int voices) {
    constexpr int kSampleWords = 30000;
    constexpr int kPeriod = 428;
    std::vector<uint8_t> bytes(20);
    for (int sample = 0; sample < 31; ++sample) {
        bytes.resize(bytes.size() + 22);
        AppendBigEndian16(bytes, sample == 0 ? kSampleWords : 0);
        bytes.push_back(0);  // tuning
        bytes.push_back(32); // volume
        AppendBigEndian16(bytes, 0);
        AppendBigEndian16(bytes, sample == 0 ? kSampleWords : 1);
    }
    bytes.push_back(1); // patterns to play
    bytes.push_back(127);
    bytes.resize(bytes.size() + 128);
    for (const char letter : {'8', 'C', 'H', 'N'}) {
        bytes.push_back(static_cast<uint8_t>(letter));
    }
    for (int cell = 0; cell < 64 * 8; ++cell) {
        const bool starts = cell < voices;
        AppendBigEndian16(bytes, starts ? kPeriod : 0);
        bytes.push_back(starts ? 0x10 : 0); // sample 1
        bytes.push_back(0);
    }
    for (int i = 0; i < 2 * kSampleWords; ++i) {
        bytes.push_back(static_cast<uint8_t>(static_cast<int>(100 * std::sin(i * 0.01))));
    }
    return bytes;
}

using Module = std::shared_ptr<openmpt_module>;

Module OpenModule(int voices) {
    const std::vector<uint8_t> file = MakeModule(voices);
    openmpt_module* const module = openmpt_module_create_from_memory2(
        file.data(), file.size(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    if (module == nullptr) {
        throw std::runtime_error("libopenmpt refuses the module");
    }
    openmpt_module_set_repeat_count(module, -1);
    openmpt_module_set_render_param(module, OPENMPT_MODULE_RENDER_INTERPOLATIONFILTER_LENGTH, 8);
    return {module, openmpt_module_destroy};
}

// A synthesizer with `voices` voices that go round a sample for ever.
std::shared_ptr<fluid_synth_t> MakeSynth(int voices) {
    fluid_settings_t* const settings = new_fluid_settings();
    fluid_settings_setnum(settings, "synth.sample-rate", kRate);
    fluid_settings_setint(settings, "synth.reverb.active", 0);
    fluid_settings_setint(settings, "synth.chorus.active", 0);
    fluid_synth_t* const synth = new_fluid_synth(settings);
    fluid_synth_set_interp_method(synth, -1, FLUID_INTERP_7THORDER);
    constexpr unsigned kSampleFrames = 60000;
    std::vector<short> data(kSampleFrames);
    for (size_t i = 0; i < data.size(); ++i) {
        data[i] = static_cast<short>(20000 * std::sin(static_cast<double>(i) * 0.01));
    }
    fluid_sample_t* const sample = new_fluid_sample();
    fluid_sample_set_sound_data(sample, data.data(), nullptr, kSampleFrames, 44100, 1);
    fluid_sample_set_loop(sample, 16, kSampleFrames - 16);
    fluid_sample_set_pitch(sample, 60, 0);
    for (int i = 0; i < voices; ++i) {
        fluid_voice_t* const voice = fluid_synth_alloc_voice(synth, sample, 0, 60, 100);
        fluid_voice_gen_set(voice, GEN_SAMPLEMODE, 1);
        fluid_synth_start_voice(synth, voice);
    }
    return {synth, [settings, sample](fluid_synth_t* one) {
                delete_fluid_synth(one);
                delete_fluid_sample(sample);
                delete_fluid_settings(settings);
            }};
}

} // namespace

SVoicePeer OpenMptVoices() {
    const auto renderBy = [](const Module& module) {
        return [module](SOutput& output) {
            openmpt_module_read_float_stereo(module.get(), kRate, kFrames, output.fLeft.data(),
                                             output.fRight.data());
        };
    };
    const auto loud = renderBy(OpenModule(kVoices));
    const auto silent = renderBy(OpenModule(0));
    return {"libopenmpt, 8 taps", kVoices * kFrames,
            [loud, silent] { return TimeVoices(loud, silent); }};
}

SVoicePeer FluidSynthVoices() {
    const auto renderBy = [](const std::shared_ptr<fluid_synth_t>& synth) {
        return [synth](SOutput& output) {
            fluid_synth_write_float(synth.get(), kFrames, output.fLeft.data(), 0, 1,
                                    output.fRight.data(), 0, 1);
        };
    };
    const auto loud = renderBy(MakeSynth(kVoices));
    const auto silent = renderBy(MakeSynth(0));
    return {"FluidSynth, 7th order", kVoices * kFrames,
            [loud, silent] { return TimeVoices(loud, silent); }};
}

} // namespace LoopBench

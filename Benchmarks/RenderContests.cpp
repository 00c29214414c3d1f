// Voices beside those of other engines, whole blocks, and previews through the exports.

#include "Benchmarks/Contest/Contests.h"
#include "Benchmarks/Peers/VoicePeers.h"
#include "LoopLibrary/Render/Equalizer/CEqualizerEffect.h"
#include "LoopLibrary/Render/Sampler/CTesselSampler.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/SyntheticLoop.h"

#include <array>
#include <cmath>
#include <stdexcept>

namespace LoopBench {

namespace {

using namespace NSLOPDLL;

constexpr int32_t kVoices = 8;
constexpr int32_t kSampleFrames = 441000;
constexpr int kBlocks = 200; // of one turn

const CABCWaveSample& GetSample(bool stereo) {
    const auto make = [](bool isStereo) {
        auto sample = CreateWaveSample(44100, kSampleFrames, isStereo, 16);
        NSLoopWriter::CNoise noise(1);
        for (int32_t channel = 1; channel <= (isStereo ? 2 : 1); ++channel) {
            for (int32_t frame = 0; frame < kSampleFrames; ++frame) {
                sample->Set24BitSample(frame, noise.Next() / 2, channel);
            }
        }
        return sample;
    };
    static const auto mono = make(false);
    static const auto both = make(true);
    return stereo ? *both : *mono;
}

enum class EPlace { kBody, kTail, kOneFrameTail };

CSlicePlayRange RangeFor(EPlace place, int32_t voice) {
    const int32_t start = voice * 999;
    switch (place) {
    case EPlace::kTail:
        return {9990, 90000, 5000, 9991, 0.9F};
    case EPlace::kOneFrameTail:
        return {1000, 45000, 1000, 1001, 0.9F};
    default:
        return {start, kSampleFrames, start, kSampleFrames, 1.0F};
    }
}

// Seconds for kBlocks blocks of eight voices, started anew for each since a started voice releases
// the others, and released ones die within two blocks. What starting takes is taken off.
class CEightVoices {
public:
    CEightVoices(bool stereo, int32_t rate, EPlace place, bool withEqualizer)
        : fSampler(&GetSample(stereo), rate), fPlace(place), fWithEqualizer(withEqualizer) {
        fSampler.SetShaperOn(place != EPlace::kBody);
        fSampler.SetShaperAttack(0);
        fSampler.SetShaperStretch(100);
        fEqualizer.SetEnabled(true);
        fEqualizer.SetRunFlag(true);
        fEqualizer.SetBand1Gain(6000);
        fEqualizer.SetBand2Gain(-6000);
    }

    double Run() {
        const double start = ThreadSeconds();
        for (int block = 0; block < kBlocks; ++block) {
            StartVoices();
        }
        const double middle = ThreadSeconds();
        for (int block = 0; block < kBlocks; ++block) {
            StartVoices();
            fSampler.RenderBlock({fLeft.data(), fRight.data()});
            if (fWithEqualizer) {
                fEqualizer.Process({fLeft.data(), fRight.data()});
            }
        }
        const double end = ThreadSeconds();
        Check();
        return end - middle - (middle - start);
    }

private:
    void StartVoices() {
        fSampler.ResetVoices();
        for (int32_t voice = 0; voice < kVoices; ++voice) {
            fSampler.StartRange(RangeFor(fPlace, voice));
        }
    }

    // Each voice has a gain and has gone on, or into its tail.
    void Check() const {
        for (size_t i = 0; i < kVoices; ++i) {
            const SamplerVoice& voice = fSampler.GetVoice(i);
            if (voice.fGain == 0.0F || (fPlace == EPlace::kBody && voice.fPosition < 32) ||
                (fPlace != EPlace::kBody && !voice.fInTail)) {
                throw std::runtime_error("a voice that is measured does not sound");
            }
        }
    }

    CTesselSampler fSampler;
    CEqualizerEffect fEqualizer{44100};
    EPlace fPlace;
    bool fWithEqualizer;
    alignas(64) std::array<float, kBlockFrames> fLeft{};
    alignas(64) std::array<float, kBlockFrames> fRight{};
};

void AddVoices(CContest& contest, const std::string& name, bool stereo, int32_t rate, EPlace place,
               bool withEqualizer) {
    const auto voices = std::make_shared<CEightVoices>(stereo, rate, place, withEqualizer);
    contest.AddTimed(name, [voices] { return voices->Run(); });
}

void HoldVoiceContest(SSession& session) {
    CContest contest("a voice", "channel-frame or stereo frame", 1);
    const auto addPeer = [&](const SVoicePeer& peer) {
        contest.AddTimed(peer.fName, [peer] { return peer.fRun() / peer.fUnits; });
    };
    addPeer(OpenMptVoices());
    addPeer(FluidSynthVoices());
    addPeer(SwresampleStream());
    addPeer(SamplerateStream());
    for (const bool stereo : {false, true}) {
        for (const int32_t rate : {44100, 48000}) {
            const auto voices = std::make_shared<CEightVoices>(stereo, rate, EPlace::kBody, false);
            contest.AddTimed(
                std::string("own, ") + (stereo ? "stereo, " : "mono, ") +
                    (rate == 44100 ? "unit step" : "48 kHz"),
                [voices] { return voices->Run() / (kVoices * kBlocks * kBlockFrames); });
        }
    }
    session.Hold(contest);
}

void HoldBlockContests(SSession& session) {
    struct SRow {
        const char* fName;
        EPlace fPlace;
        bool fEqualizer;
    };
    for (const SRow& row : {SRow{"8 voices", EPlace::kBody, false},
                            SRow{"8 voices and equalizer", EPlace::kBody, true},
                            SRow{"8 voices in the tail", EPlace::kTail, false},
                            SRow{"8 voices in tails of one frame", EPlace::kOneFrameTail, false}}) {
        CContest contest(std::string("block of 64 frames, ") + row.fName, "block", kBlocks);
        for (const bool stereo : {true, false}) {
            for (const int32_t rate : {44100, 48000}) {
                AddVoices(contest,
                          std::string(stereo ? "stereo, " : "mono, ") +
                              (rate == 44100 ? "unit step" : "48 kHz"),
                          stereo, rate, row.fPlace, row.fEqualizer);
            }
        }
        session.Hold(contest);
    }
}

struct SPreview {
    bool fStereo = true;
    uint32_t fRate = 1000000; // of the file, which decides the step; the output has 1 MHz
    bool fEqualizer = true;
    int32_t fBatch = 256;
    int32_t fBlocksPerSlice = 1;
};

// A loop whose slices begin every so many blocks at 1 MHz and 450 BPM. With one in each block all
// eight voices sound: those before the newest are on their way out.
std::vector<uint8_t> MakeDenseLoop(const SPreview& preview) {
    constexpr uint32_t kOutputRate = 1000000;
    const double sliceFrames = 16.0 * 64 * preview.fBlocksPerSlice;
    const bool stereo = preview.fStereo;
    const uint32_t rate = preview.fRate;
    const auto frames = static_cast<size_t>(2133333.0 * rate / kOutputRate);
    NSLoopWriter::SLOP2File file;
    file.fSampleInfo.fSampleRate = rate;
    file.fGeneralInfo.fBars = 0;
    file.fGeneralInfo.fBeats = 1;
    file.fEqualizer.fEnabled = preview.fEqualizer ? 1 : 0;
    file.fEqualizer.fBand1Gain = 6000;
    file.fEqualizer.fBand2Gain = -6000;
    file.fLeft = NSLoopWriter::MakeNoise(frames, 15, 1);
    if (stereo) {
        file.fRight = NSLoopWriter::MakeNoise(frames, 15, 2);
    }
    file.fSlices.clear();
    for (double position = 0; position + sliceFrames < static_cast<double>(frames);
         position += sliceFrames * rate / kOutputRate) {
        NSLoopWriter::SLOP2Slice slice;
        slice.fPosition = static_cast<uint32_t>(position);
        file.fSlices.push_back(slice);
    }
    return NSLoopWriter::WriteLOP2(file);
}

void HoldPreviewContest(SSession& session, const SPreview& preview) {
    constexpr int32_t kFrames = 64 * 256;
    const std::vector<uint8_t> file = MakeDenseLoop(preview);
    const int32_t batch = preview.fBatch;
    CContest contest(
        std::string(preview.fBlocksPerSlice == 1 ? "preview, 8 voices, " : "preview, ") +
            (preview.fStereo ? "stereo, " : "mono, ") +
            (preview.fRate == 1000000 ? "unit step" : "resampled") +
            (preview.fEqualizer ? ", equalizer" : "") + ", batches of " + std::to_string(batch) +
            (preview.fBlocksPerSlice == 1 ? "" : ", few triggers"),
        "block of 64 frames", kFrames / 64.0);
    std::vector<float> left(static_cast<size_t>(batch));
    std::vector<float> right(static_cast<size_t>(batch));
    std::vector<LOPHandle> loops;
    for (const CLibrary* library : session.FromOldest()) {
        LOPHandle loop = library->Load(file);
        loops.push_back(loop);
        library->fSetOutputSampleRate(loop, 1000000);
        library->fSetPreviewTempo(loop, 450000);
        library->fStartPreview(loop);
        contest.Add(library->GetName(), [&, library, loop] {
            LOPRenderBuffers out{left.data(), right.data()};
            for (int32_t done = 0; done < kFrames; done += batch) {
                library->fRenderPreviewBatch(loop, batch, &out);
            }
        });
    }
    session.Hold(contest);
    const std::vector<const CLibrary*> libraries = session.FromOldest();
    for (size_t i = 0; i < loops.size(); ++i) {
        libraries[i]->fStopPreview(loops[i]);
        libraries[i]->fDelete(&loops[i]);
    }
}

} // namespace

void HoldRenderContests(SSession& session) {
    HoldVoiceContest(session);
    HoldBlockContests(session);
    for (const int32_t batch : {64, 256, 1024}) {
        HoldPreviewContest(session, {.fBatch = batch});
    }
    HoldPreviewContest(session, {.fBlocksPerSlice = 32});
    HoldPreviewContest(session, {.fEqualizer = false});
    HoldPreviewContest(session, {.fRate = 918750}); // as 48 kHz to 44100
    HoldPreviewContest(session, {.fStereo = false});
    HoldPreviewContest(session, {.fStereo = false, .fRate = 918750});
}

} // namespace LoopBench

// Voices beside those of other engines, whole blocks, and previews through the exports.

#include "Benchmarks/Contest/Contests.h"
#include "Benchmarks/Peers/VoicePeers.h"
#include "Benchmarks/Voices/EightVoices.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/SyntheticLoop.h"

#include <stdexcept>

namespace LoopBench {

namespace {

constexpr int kBlockFrames = 64;

using FRunEightVoices = decltype(&LoopBenchRunEightVoices);

void AddVoices(CContest& contest, const std::string& name, FRunEightVoices run,
               const SEightVoices& what, double units) {
    contest.AddTimed(name, [run, what, units] {
        const double seconds = run(&what);
        if (seconds < 0) {
            throw std::runtime_error("a voice that is measured does not sound");
        }
        return seconds / units;
    });
}

std::string NameOf(const SEightVoices& what) {
    return std::string(what.fStereo != 0 ? "stereo, " : "mono, ") +
           (what.fRate == 44100 ? "unit step" : "48 kHz");
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
    for (const int32_t stereo : {0, 1}) {
        for (const int32_t rate : {44100, 48000}) {
            const SEightVoices what = {.fStereo = stereo, .fRate = rate};
            AddVoices(contest, "own, " + NameOf(what), LoopBenchRunEightVoices, what,
                      kMeasuredVoices * kMeasuredBlocks * kBlockFrames);
        }
    }
    session.Hold(contest);
}

void HoldBlockContests(SSession& session) {
    struct SRow {
        const char* fName;
        EPlace fPlace;
        int32_t fEqualizer;
    };
    const FRunEightVoices earlier = session.fEarlierVoices;
    for (const SRow& row :
         {SRow{"8 voices", EPlace::kBody, 0}, SRow{"8 voices and equalizer", EPlace::kBody, 1},
          SRow{"8 voices in the tail", EPlace::kTail, 0},
          SRow{"8 voices in tails of one frame", EPlace::kOneFrameTail, 0}}) {
        CContest contest(std::string("block of 64 frames, ") + row.fName, "block", kMeasuredBlocks);
        for (const int32_t stereo : {1, 0}) {
            for (const int32_t rate : {44100, 48000}) {
                const SEightVoices what = {stereo, rate, row.fPlace, row.fEqualizer};
                if (earlier != nullptr) {
                    AddVoices(contest, "other build, " + NameOf(what), earlier, what, 1);
                }
                AddVoices(contest, NameOf(what), LoopBenchRunEightVoices, what, 1);
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

// What each call costs by what it grows with: frames, slices, the output rate.

#include "Benchmarks/Contest/Contests.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/SyntheticLoop.h"

#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <string>

#include <malloc.h>

namespace LoopBench {

namespace {

using File = std::vector<uint8_t>;

// Noise of 10 bits in stereo at 44100 frames per second, cut into slices of one length.
File MakeLoop(int32_t seconds, int32_t slices) {
    NSLoopWriter::SLOP2File file;
    file.fGeneralInfo.fBars = static_cast<uint16_t>(seconds / 2);
    const int32_t frames = seconds * 44100;
    file.fLeft = NSLoopWriter::MakeNoise(static_cast<size_t>(frames), 10, 1);
    file.fRight = NSLoopWriter::MakeNoise(static_cast<size_t>(frames), 10, 2);
    file.fSlices.clear();
    for (int32_t slice = 0; slice < slices; ++slice) {
        NSLoopWriter::SLOP2Slice cut;
        cut.fPosition = static_cast<uint32_t>(frames / slices * slice);
        file.fSlices.push_back(cut);
    }
    return NSLoopWriter::WriteLOP2(file);
}

// One row: a contestant for each size, the first of them what the others are compared with.
template <class AddSize>
void HoldRow(SSession& session, const std::string& name, const std::string& unit, double units,
             std::initializer_list<int32_t> sizes, const AddSize& addSize) {
    CContest contest(name, unit, units);
    for (const int32_t size : sizes) {
        addSize(contest, size);
    }
    session.Hold(contest);
}

void AddLoad(const CLibrary& library, CContest& contest, const std::string& name, File file) {
    contest.Add(name, [&library, file = std::move(file)] {
        LOPHandle loop = library.Load(file);
        library.fDelete(&loop);
    });
}

int32_t FramesOfSlice(const CLibrary& library, LOPHandle loop) {
    LOPSliceInfo info{};
    library.fGetSliceInfo(loop, 0, static_cast<int32_t>(sizeof info), &info);
    return info.fFrameCount;
}

// The peak of a load beyond what was held before it, and what it holds in the end.
void MeasurePeak(SSession& session, const CLibrary& library, int32_t seconds) {
    const File file = MakeLoop(seconds, 16);
    const auto readKilobytes = [](const std::string& key) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            if (word == key + ":") {
                double kilobytes = 0;
                status >> kilobytes;
                return kilobytes;
            }
        }
        return 0.0;
    };
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5; // the peak starts from here
    const double before = readKilobytes("VmRSS");
    LOPHandle loop = library.Load(file);
    const double peak = readKilobytes("VmHWM") - before;
    const double held = readKilobytes("VmRSS") - before;
    library.fDelete(&loop);
    const double planes = seconds * 44100 * 4 / 1024.0;
    std::printf("memory of a load of %d s: %.0f KB at most, %.0f KB held, %.0f KB of samples\n",
                seconds, peak, held, planes);
    session.fReport.push_back({{"measure", "memory of a load"},
                               {"seconds", seconds},
                               {"peak", peak},
                               {"held", held},
                               {"samples", planes}});
}

} // namespace

void HoldGrowthContests(SSession& session) {
    const CLibrary& library = *session.fLibraries.front();
    LOPHandle loop = library.Load(MakeLoop(10, 16)); // holds the tables of its rate
    std::vector<float> left(1 << 23);
    std::vector<float> right(1 << 23);
    HoldRow(session, "LOPCreate by length, 16 slices", "load", 1, {2, 10, 60},
            [&](CContest& contest, int32_t seconds) {
                AddLoad(library, contest, std::to_string(seconds) + " s", MakeLoop(seconds, 16));
            });
    HoldRow(session, "LOPCreate by slices, 10 s", "load", 1, {1, 16, 100, 1000},
            [&](CContest& contest, int32_t slices) {
                AddLoad(library, contest, std::to_string(slices) + " slices", MakeLoop(10, slices));
            });
    HoldRow(session, "LOPRenderSlice by output rate", "output frame", 1,
            {44100, 11025, 22050, 48000, 96000, 192000}, [&](CContest& contest, int32_t rate) {
                contest.AddTimed(std::to_string(rate) + " Hz", [&, rate] {
                    library.fSetOutputSampleRate(loop, rate);
                    const int32_t frames = FramesOfSlice(library, loop);
                    LOPRenderBuffers out{left.data(), right.data()};
                    const double start = ThreadSeconds();
                    library.fRenderSlice(loop, 0, frames, &out);
                    return (ThreadSeconds() - start) / frames;
                });
            });
    HoldRow(session, "LOPRenderPreviewBatch, 256 frames", "frame", 256 * 40.0,
            {44100, 0, 22050, 48000, 96000, 192000}, [&](CContest& contest, int32_t rate) {
                contest.AddTimed(rate == 0 ? "stopped" : std::to_string(rate) + " Hz", [&, rate] {
                    library.fSetOutputSampleRate(loop, rate == 0 ? 44100 : rate);
                    if (rate != 0) {
                        library.fStartPreview(loop);
                    }
                    LOPRenderBuffers out{left.data(), right.data()};
                    const double start = ThreadSeconds();
                    for (int batch = 0; batch < 40; ++batch) {
                        library.fRenderPreviewBatch(loop, 256, &out);
                    }
                    const double seconds = ThreadSeconds() - start;
                    library.fStopPreview(loop);
                    library.fRenderPreviewBatch(loop, 65536, &out); // the fade
                    return seconds;
                });
            });
    library.fDelete(&loop);
    for (const int32_t seconds : {10, 60, 600}) {
        MeasurePeak(session, library, seconds);
    }
}

} // namespace LoopBench

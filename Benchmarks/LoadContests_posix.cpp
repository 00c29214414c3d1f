// Loading, looking up and rendering slices through the exports, and the memory that loops hold.

#include "Benchmarks/Contest/Contests.h"
#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/DrumFiles.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <cstdio>
#include <fstream>
#include <span>

#include <malloc.h>
#include <unistd.h>

namespace LoopBench {

namespace {

using File = std::vector<uint8_t>;

// At 120 BPM: two beats a second.
NSLoopWriter::SDrumLoopOptions DrumOptions(int32_t seconds) {
    return {.fStereo = true, .fBeats = 2 * seconds};
}

File DrumFile(int32_t seconds) {
    return NSLoopWriter::WriteLOP2(NSLoopWriter::MakeDrumLOP2(DrumOptions(seconds)));
}

void AddCreate(CContest& contest, const CLibrary& library, const File& file) {
    contest.Add("LOPCreate, " + library.GetName(), [&library, &file] {
        LOPHandle loop = library.Load(file);
        library.fDelete(&loop);
    });
}

// What a load costs over decoding its audio, when another loop holds the tables of the rate.
void HoldCreateContest(SSession& session, int32_t seconds) {
    const NSLoopWriter::SDrumLoop drums = NSLoopWriter::MakeDrumLoop(DrumOptions(seconds));
    const File stream = NSLoopWriter::CompressTWIP(drums.fLeft, drums.fRight);
    const File file = DrumFile(seconds);
    const size_t frames = drums.fLeft.size();
    CContest contest("load " + std::to_string(seconds) + " s, stereo, 16 bits", "frame",
                     static_cast<double>(frames));
    std::vector<int16_t> left(frames);
    std::vector<int16_t> right(frames);
    contest.Add("own decoder", [&] {
        NSPorter::CMemoryMedia media(static_cast<int64_t>(stream.size()), stream.data());
        NSLOPDLL::COptimizedTWIPDecompressorFromMedia(&media).DecompressPlanes(
            static_cast<int32_t>(frames), left.data(), right.data());
    });
    std::vector<LOPHandle> holders;
    for (const auto& library : session.fLibraries) {
        holders.push_back(library->Load(file));
        AddCreate(contest, *library, file);
    }
    session.Hold(contest);
    for (size_t i = 0; i < holders.size(); ++i) {
        session.fLibraries[i]->fDelete(&holders[i]);
    }
}

void HoldFirstLoadContest(SSession& session) {
    const File file = DrumFile(2);
    CContest contest("load 2 s with the tables of its rate to be made", "load", 1);
    for (const CLibrary* library : session.FromOldest()) {
        AddCreate(contest, *library, file);
    }
    session.Hold(contest);
}

void HoldManyLoopsContests(SSession& session) {
    constexpr size_t kLoops = 1000;
    const File file =
        NSLoopWriter::WriteLOP2(NSLoopWriter::MakeDrumLOP2({.fSampleRate = 11025, .fBeats = 1}));
    CContest create("load and delete 1000 short loops", "loop", kLoops);
    CContest first("look up the first of 1000 loops", "LOPGetInfo", 1000);
    CContest last("look up the last of 1000 loops", "LOPGetInfo", 1000);
    std::vector<std::vector<LOPHandle>> all;
    all.reserve(session.fLibraries.size());
    for (const CLibrary* library : session.FromOldest()) {
        create.Add(library->GetName(), [library, &file] {
            std::vector<LOPHandle> loops;
            for (size_t i = 0; i < kLoops; ++i) {
                loops.push_back(library->Load(file));
            }
            for (LOPHandle& loop : loops) {
                library->fDelete(&loop);
            }
        });
        auto& loops = all.emplace_back();
        for (size_t i = 0; i < kLoops; ++i) {
            loops.push_back(library->Load(file));
        }
        const auto lookUp = [library](LOPHandle loop) {
            return [library, loop] {
                LOPInfo info;
                for (int i = 0; i < 1000; ++i) {
                    library->fGetInfo(loop, static_cast<int32_t>(sizeof info), &info);
                }
            };
        };
        first.Add(library->GetName(), lookUp(loops.front()));
        last.Add(library->GetName(), lookUp(loops.back()));
    }
    session.Hold(first);
    session.Hold(last);
    const std::vector<const CLibrary*> libraries = session.FromOldest();
    for (size_t i = 0; i < libraries.size(); ++i) {
        for (LOPHandle& loop : all[i]) {
            libraries[i]->fDelete(&loop);
        }
    }
    session.Hold(create);
}

void HoldInfoContest(SSession& session) {
    const size_t count = session.fQuick ? 1000 : 10000;
    const std::vector<File> files(count, DrumFile(2)); // as many places in memory
    CContest contest("LOPGetInfoFromBuffer of " + std::to_string(count) + " files", "file",
                     static_cast<double>(count));
    for (const CLibrary* library : session.FromOldest()) {
        contest.Add(library->GetName(), [library, &files] {
            LOPInfo info;
            for (const File& file : files) {
                library->fGetInfoFromBuffer(static_cast<int32_t>(file.size()), file.data(),
                                            static_cast<int32_t>(sizeof info), &info);
            }
        });
    }
    session.Hold(contest);
}

void HoldSliceContest(SSession& session, int32_t rate) {
    const File file = DrumFile(4);
    std::vector<float> left(1 << 20);
    std::vector<float> right(1 << 20);
    std::vector<LOPHandle> loops;
    double frames = 0;
    LOPInfo info{};
    for (const CLibrary* library : session.FromOldest()) {
        loops.push_back(library->Load(file));
        library->fSetOutputSampleRate(loops.back(), rate);
        library->fGetInfo(loops.back(), static_cast<int32_t>(sizeof info), &info);
        frames = 0;
        for (int32_t index = 0; index < info.fSliceCount; ++index) {
            LOPSliceInfo slice{};
            library->fGetSliceInfo(loops.back(), index, static_cast<int32_t>(sizeof slice), &slice);
            frames += slice.fFrameCount;
        }
    }
    CContest contest("LOPRenderSlice at " + std::to_string(rate) + " Hz", "frame", frames);
    const std::vector<const CLibrary*> libraries = session.FromOldest();
    for (size_t i = 0; i < libraries.size(); ++i) {
        contest.Add(libraries[i]->GetName(), [&, library = libraries[i], loop = loops[i]] {
            LOPRenderBuffers out{left.data(), right.data()};
            for (int32_t index = 0; index < info.fSliceCount; ++index) {
                library->fRenderSlice(loop, index, static_cast<int32_t>(left.size()), &out);
            }
        });
    }
    session.Hold(contest);
    for (size_t i = 0; i < libraries.size(); ++i) {
        libraries[i]->fDelete(&loops[i]);
    }
}

double ResidentKilobytes() {
    std::ifstream file("/proc/self/statm");
    long all = 0;
    long resident = 0;
    file >> all >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / 1024;
}

void MeasureMemory(SSession& session) {
    constexpr size_t kLoops = 200;
    const File file = DrumFile(2);
    const double planes = 2.0 * 2 * 44100 * 2 / 1024;
    for (const CLibrary* library : session.FromOldest()) {
        malloc_trim(0);
        const double before = ResidentKilobytes();
        std::vector<LOPHandle> loops;
        for (size_t i = 0; i < kLoops; ++i) {
            loops.push_back(library->Load(file));
        }
        const double held = (ResidentKilobytes() - before) / kLoops - planes;
        std::printf("memory of a loop of 2 s over its planes, %s: %.1f KB\n",
                    library->GetName().c_str(), held);
        session.fReport.push_back({{"measure", "memory of a loop of 2 s over its planes"},
                                   {"name", library->GetName()},
                                   {"kilobytes", held}});
        for (LOPHandle& loop : loops) {
            library->fDelete(&loop);
        }
    }
}

} // namespace

void HoldLoadContests(SSession& session) {
    for (const int32_t seconds : {2, 4, 10, 60}) {
        HoldCreateContest(session, seconds);
    }
    HoldFirstLoadContest(session);
    HoldManyLoopsContests(session);
    HoldInfoContest(session);
    for (const int32_t rate : {44100, 48000}) {
        HoldSliceContest(session, rate);
    }
    MeasureMemory(session);
}

} // namespace LoopBench

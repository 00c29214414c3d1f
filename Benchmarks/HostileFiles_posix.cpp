// What crafted files of just under a megabyte cost a host: each is loaded, asked for everything and
// played for a second in a process of its own. A load should take no more than a second of CPU and
// hold no more than 32 times the file plus 64 MB; a row beyond that is marked and fails the run.
// The last row may: a .lop can state a loop of hours in a few bytes, and has it.

#include "LoopLibrary/Public/LoopLibrary.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/SyntheticLoop.h"
#include "LoopWriter/TSLFile.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace NSLoopWriter;
using NSPorter::FourCharID;

constexpr size_t kFileSize = 1000000;
constexpr double kMaxSeconds = 1.0;
constexpr double kMegabyte = 1048576.0;

// Stereo of 24 bits over a stream of one repeated byte that claims `frames`.
SLOP2File StreamOf(uint8_t byte, int32_t frames) {
    SLOP2File file;
    file.fBitDepth = 24;
    file.fRight = file.fLeft;
    file.fRawStream = std::vector<uint8_t>(kFileSize - 1000, byte);
    file.fSampleInfo.fFrames = frames;
    file.fSampleInfo.fLoopEnd = frames;
    return file;
}

SLOP2File Silence() {
    SLOP2File file;
    file.fBitDepth = 24;
    file.fLeft = Plane(50000);
    file.fRight = file.fLeft;
    const size_t small = WriteLOP2(file).size();
    file.fLeft = Plane(100000);
    file.fRight = file.fLeft;
    const double perFrame = static_cast<double>(WriteLOP2(file).size() - small) / 50000;
    file.fLeft = Plane(static_cast<size_t>((kFileSize - 1000) / perFrame));
    file.fRight = file.fLeft;
    return file;
}

// As many slices as fit; `step` is the distance of each to the one before it, negative or 0 too.
SLOP2File ManySlices(int32_t step) {
    constexpr int32_t kSlices = 48000;
    SLOP2File file;
    file.fLeft = Plane(100000);
    file.fSlices.assign(kSlices, SLOP2Slice{});
    for (int32_t index = 0; index < kSlices; ++index) {
        const int32_t position = step < 0 ? (kSlices - 1 - index) * -step : index * step;
        file.fSlices[static_cast<size_t>(index)].fPosition = static_cast<uint32_t>(position);
    }
    return file;
}

// Chunks of no meaning and without content before those of the root from `index` on.
ChunkEdit Junk(size_t count, ptrdiff_t index) {
    return [count, index](SIFFChunk& root) {
        root.fChildren.insert(root.fChildren.begin() + index, count,
                              MakeSimpleChunk(FourCharID("JUNK"), {}));
    };
}

// 1000 pieces of `length` frames, each `distance` behind the one before it in the audio.
SLOPFile ManyPieces(uint32_t distance, uint32_t length) {
    SLOPFile file;
    file.fAudio.fSamples = MakeNoise(490000, 16, 1);
    file.fPPQLength = 16000;
    file.fSlices.clear();
    for (uint32_t index = 0; index < 1000; ++index) {
        file.fSlices.push_back({index * distance, length, index * 16});
    }
    return file;
}

std::vector<uint8_t> Nest() {
    std::vector<uint8_t> bytes;
    for (size_t left = kFileSize; left >= 12; left -= 12) {
        for (const uint32_t word :
             {FourCharID("CAT "), static_cast<uint32_t>(left - 8), FourCharID("LOP2")}) {
            const auto stored = NSPorter::SplitBytes(word);
            bytes.insert(bytes.end(), stored.begin(), stored.end());
        }
    }
    return bytes;
}

struct SCase {
    const char* fName;
    std::function<std::vector<uint8_t>()> fMake;
    bool fMayExceed = false;
};

std::vector<SCase> Cases() {
    std::vector<SCase> cases;
    cases.push_back({"LOP2 of silence, stereo, 24 bits", [] { return WriteLOP2(Silence()); }});
    cases.push_back({"LOP2 that claims 2^31-1 frames, all bits 0",
                     [] { return WriteLOP2(StreamOf(0, 0x7FFFFFFF)); }});
    cases.push_back({"LOP2 that claims 2^31-1 frames, all bits 1",
                     [] { return WriteLOP2(StreamOf(0xFF, 0x7FFFFFFF)); }});
    cases.push_back(
        {"LOP2 with as many frames as bits", [] { return WriteLOP2(StreamOf(0xFF, 3990000)); }});
    for (const int32_t step : {1, 0, -1}) {
        cases.push_back({step > 0   ? "LOP2 with 48000 slices, rising"
                         : step < 0 ? "LOP2 with 48000 slices, falling"
                                    : "LOP2 with 48000 slices on one frame",
                         [step] { return WriteLOP2(ManySlices(step)); }});
    }
    cases.push_back({"LOP2 with 120000 empty chunks", [] {
                         SLOP2File file;
                         file.fEdit = Junk(120000, 1);
                         return WriteLOP2(file);
                     }});
    cases.push_back({"LOP2 with a creator text of 1 MB", [] {
                         SLOP2File file;
                         file.fCreatorInfo.emplace();
                         auto& text = file.fCreatorInfo->fTexts[4];
                         text.fForm = SStoredText::EForm::kLong;
                         text.fText.assign(kFileSize / 3 - 1000, u'\u20AC');
                         return WriteLOP2(file);
                     }});
    cases.push_back({".tsl of 1 MB with 1000 slices", [] {
                         STSLFile file;
                         file.fAudio.fSamples = MakeNoise(490000, 16, 1);
                         file.SetLoop(0, 490000);
                         file.fSlices.assign(1000, STSLSlice{});
                         for (uint32_t index = 0; index < 1000; ++index) {
                             file.fSlices[index].fPosition = index * 490;
                         }
                         return WriteTSL(file);
                     }});
    cases.push_back({".tsl with 110000 empty chunks", [] {
                         STSLFile file;
                         file.fEdit = Junk(110000, 0);
                         return WriteTSL(file);
                     }});
    cases.push_back({".lop of 1 MB in 1000 pieces", [] { return WriteLOP(ManyPieces(490, 490)); }});
    cases.push_back({".lop of 1000 pieces that all reach over 1 MB",
                     [] { return WriteLOP(ManyPieces(0, 490000)); }});
    cases.push_back({"groups nested to the end", Nest});
    cases.push_back({"small .lop of 1960 million frames",
                     [] {
                         SLOPFile file;
                         file.fAudio.fSamples = MakeNoise(1024, 16, 1);
                         file.fPPQLength = 999 * 3840;
                         file.fSlices = {{0, 512, 0}, {512, 512, 1}};
                         return WriteLOP(file);
                     },
                     true});
    return cases;
}

// In the child: the result of the load.
LOPResult Use(const std::vector<uint8_t>& bytes) {
    LOPInitializeDLL();
    LOPInfo info{};
    const auto size = static_cast<int32_t>(bytes.size());
    LOPGetInfoFromBuffer(size, bytes.data(), static_cast<int32_t>(sizeof info), &info);
    LOPHandle loop = 0;
    const LOPResult result = LOPCreate(&loop, bytes.data(), size, nullptr, nullptr);
    if (result == kLOPResult_OK) {
        LOPGetInfo(loop, static_cast<int32_t>(sizeof info), &info);
        LOPSliceInfo slice{};
        for (int32_t index = 0; index < info.fSliceCount; ++index) {
            LOPGetSliceInfo(loop, index, static_cast<int32_t>(sizeof slice), &slice);
        }
        std::vector<float> left(512);
        std::vector<float> right(512);
        LOPRenderBuffers buffers{left.data(), right.data()};
        LOPStartPreview(loop);
        for (int batch = 0; batch < 100; ++batch) {
            LOPRenderPreviewBatch(loop, 512, &buffers);
        }
        LOPStopPreview(loop);
        LOPDelete(&loop);
    }
    LOPUninitializeDLL();
    return result;
}

double Megabytes(const rusage& usage) {
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// The resident memory of this process, which a child has too before it does anything.
double ResidentMegabytes() {
    std::ifstream file("/proc/self/statm");
    long all = 0;
    long resident = 0;
    file >> all >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / kMegabyte;
}

} // namespace

int main() {
    bool within = true;
    std::printf("%-46s %8s %6s %9s %9s %9s\n", "file", "bytes", "result", "CPU s", "MB held",
                "allowed");
    for (const SCase& one : Cases()) {
        const std::vector<uint8_t> bytes = one.fMake();
        malloc_trim(0); // so that the child cannot live on what making the file has left
        const double before = ResidentMegabytes();
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            const LOPResult result = Use(bytes);
            _exit(result == kLOPResult_Undefined ? 255 : result);
        }
        int status = 0;
        rusage usage{};
        if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status)) {
            std::printf("%-46s crashed\n", one.fName);
            within = false;
            continue;
        }
        const double seconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
        const double held = std::max(0.0, Megabytes(usage) - before);
        const double allowed = 32.0 * static_cast<double>(bytes.size()) / kMegabyte + 64.0;
        const bool over = seconds > kMaxSeconds || held > allowed;
        within = within && (!over || one.fMayExceed);
        std::printf("%-46s %8zu %6d %9.3f %9.1f %9.1f%s\n", one.fName, bytes.size(),
                    WEXITSTATUS(status), seconds, held, allowed, over ? "  OVER" : "");
    }
    return within ? 0 : 1;
}

// Writes a loop of the demos, two bars in stereo and 24 bits, as a WAV file and prints the frames
// of its hits as looptool takes them.

#include "BreakLoop.h"

#include "LoopWriter/SyntheticLoop.h"
#include "looptool/Audio/CAudioWriter.h"
#include "looptool/System/Arguments.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

constexpr int32_t kBitDepth = 24;
constexpr int32_t kSampleRate = 44100;

NSLoopWriter::SDrumLoop MakePlainLoop() {
    NSLoopWriter::SDrumLoopOptions options;
    options.fSampleRate = kSampleRate;
    options.fBitDepth = kBitDepth;
    options.fStereo = true;
    options.fBeats = 8;
    return NSLoopWriter::MakeDrumLoop(options);
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = NSLoopTool::Arguments(argc, argv);
    const bool isBreak = arguments.size() == 2 && arguments[1] == "break";
    if (arguments.size() != 1 && !isBreak) {
        std::fprintf(stderr, "usage: drumloop OUT.wav [break]\n");
        return 1;
    }
    try {
        const NSLoopWriter::SDrumLoop loop = isBreak ? MakeBreakLoop() : MakePlainLoop();
        NSLoopTool::WriteAudioFile(arguments[0],
                                   {NSLoopTool::EContainer::kWav, NSLoopTool::EEncoding::kPcm24},
                                   {kSampleRate, kBitDepth, {loop.fLeft, loop.fRight}});
        std::string frames;
        for (const uint32_t hit : loop.fHits) {
            frames += (frames.empty() ? "" : ",") + std::to_string(hit);
        }
        std::puts(frames.c_str());
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "drumloop: %s\n", exception.what());
        return 2;
    }
}

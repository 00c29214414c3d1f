// Writes the demo's drum loop, two bars in stereo and 24 bits, as a WAV file and prints the frames
// of its hits as looptool takes them.

#include "LoopWriter/SyntheticLoop.h"
#include "looptool/Audio/CAudioWriter.h"
#include "looptool/System/Arguments.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string> arguments = NSLoopTool::Arguments(argc, argv);
    if (arguments.size() != 1) {
        std::fprintf(stderr, "usage: drumloop OUT.wav\n");
        return 1;
    }
    try {
        NSLoopWriter::SDrumLoopOptions options;
        options.fBitDepth = 24;
        options.fStereo = true;
        options.fBeats = 8;
        const NSLoopWriter::SDrumLoop loop = NSLoopWriter::MakeDrumLoop(options);
        NSLoopTool::WriteAudioFile(arguments[0],
                                   {NSLoopTool::EContainer::kWav, NSLoopTool::EEncoding::kPcm24},
                                   {static_cast<int32_t>(options.fSampleRate),
                                    options.fBitDepth,
                                    {loop.fLeft, loop.fRight}});
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

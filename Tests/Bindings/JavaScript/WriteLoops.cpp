#include "Tests/Host/Listenings.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

// Writes the files that the tests of the JavaScript package read: the loops that sound the same
// everywhere, as "<number>-<output rate>.loop" in the order of the hash, and single ones.
// Argument: the folder.

namespace {

void Write(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        std::fprintf(stderr, "%s: cannot be written\n", path.c_str());
        std::exit(1);
    }
}

Bytes LoopWithTexts() {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions(24, true));
    // An empty one; two lines; a character outside of the basic plane.
    constexpr std::array<std::u16string_view, 5> kTexts = {u"Kicks & hats", u"", u"one\u2029two",
                                                           u"gr\u00FC\u00DF", u"\U0001F941"};
    NSLoopWriter::SLOP2CreatorInfo& info = file.fCreatorInfo.emplace();
    for (size_t text = 0; text < kTexts.size(); ++text) {
        info.fTexts[text].fText = kTexts[text];
    }
    return WriteLOP2(file);
}

Bytes NewerLoop() {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fHead.fVersion = {4, 0};
    return WriteLOP2(file);
}

Bytes LoopOfNoLength() {
    NSLoopWriter::STSLFile file = NSLoopWriter::MakeDrumTSL(DrumOptions(16, false));
    file.fBars = 0;
    file.fBeats = 0;
    return WriteTSL(file);
}

Bytes ShortestLoop() {
    NSLoopWriter::SDrumLoopOptions options = DrumOptions(16, false);
    options.fBeats = 1;
    options.fTempo = 450000;
    options.fSampleRate = 11025;
    return WriteLOP2(NSLoopWriter::MakeDrumLOP2(options));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: WriteLoops FOLDER\n");
        return 1;
    }
    const std::string folder = argv[1];
    int number = 10;
    for (const SListening& listening : Listenings()) {
        Write(folder + "/" + std::to_string(number++) + "-" +
                  std::to_string(listening.fOutputRate) + ".loop",
              listening.fFile);
    }
    Write(folder + "/texts.lop2", LoopWithTexts());
    Write(folder + "/shortest.lop2", ShortestLoop());
    Write(folder + "/newer.lop2", NewerLoop());
    Write(folder + "/nolength.tsl", LoopOfNoLength());
    Write(folder + "/drums.lop2", DrumLOP2());
    Write(folder + "/drums.tsl", DrumTSL());
    Write(folder + "/drums.lop", DrumLOP());
    return 0;
}

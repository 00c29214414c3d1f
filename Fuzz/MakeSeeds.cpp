// Writes the seed corpus, a folder for each fuzzer, below the folder that the argument names.

#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/DrumFiles.h"
#include "LoopWriter/SyntheticLoop.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace NSLoopWriter;
using Bytes = std::vector<uint8_t>;

std::filesystem::path gFolder;

Bytes operator+(Bytes front, const Bytes& back) {
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

void Save(const std::string& fuzzer, const std::string& name, const Bytes& bytes) {
    std::filesystem::create_directories(gFolder / fuzzer);
    std::ofstream file(gFolder / fuzzer / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

Bytes Text(const std::string& text) {
    return {text.begin(), text.end()};
}

// A life with every kind of call in it: see HostContract.cpp.
const Bytes kDecisions = {1, 0, 0, 5, 3, 0, 40, 2, 0, 1, 0x77, 0x50, 5, 9, 0, 0, 7, 4,  0,
                          1, 9, 1, 6, 8, 0, 1,  3, 0, 0, 0xBB, 0x80, 0, 7, 2, 0, 0, 63, 1};

void SaveContractSeeds() {
    const Bytes head = Bytes{0, static_cast<uint8_t>(kDecisions.size())} + kDecisions;
    SDrumLoopOptions options;
    options.fSampleRate = 11025;
    Save("ContractFuzzer", "mono.tsl", head + WriteTSL(MakeDrumTSL(options)));
    Save("ContractFuzzer", "mono.lop", head + WriteLOP(MakeDrumLOP(options)));
    for (const int32_t depth : {16, 24}) {
        options.fBitDepth = depth;
        options.fStereo = depth == 24;
        SLOP2File file = MakeDrumLOP2(options);
        file.fCreatorInfo.emplace();
        file.fTesselExtraInfo.emplace();
        file.fEqualizer.fEnabled = 1;
        file.fCompressor.fEnabled = 1;
        Save("ContractFuzzer", std::to_string(depth) + ".lop2", head + WriteLOP2(file));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: MakeSeeds FOLDER\n");
        return 1;
    }
    gFolder = argv[1];
    SaveContractSeeds();
    for (const uint8_t form :
         Bytes{0, 1, 2, 0xC0}) { // LOP2, .tsl, .lop, LOP2 in stereo and 24 bits
        const auto save = [form](const std::string& edit, const Bytes& edits) {
            Save("FileFuzzer", edit + std::to_string(form), Bytes{form} + edits + kDecisions);
        };
        save("unedited", {0});
        save("cut", {1, 0, 0, 3, 0, 9});
        save("overwritten", {1, 7, 0, 2, 1, 0, 4, 0, 3});
        save("missized", {1, 6, 0, 5, 0xFF, 0xFF, 0xFF, 0xF8});
    }
    const Plane noise = MakeNoise(300, 16, 7);
    Save("CodecFuzzer", "noise", Bytes{0} + CompressTWIP(noise, {}));
    Save("CodecFuzzer", "stereo", Bytes{6} + CompressTWIP(noise, MakeSine(300, 16, 900)));
    Save("CodecFuzzer", "zeros", Bytes{0} + Bytes(40, 0));
    Save("CodecFuzzer", "signal", Bytes{3, 70, 9, 30, 200, 1, 2, 3, 60, 100, 5, 90, 250});
    Save("TextFuzzer", "plain", Bytes{0, 0, 0, 3} + Text("a\r\nb"));
    Save("TextFuzzer", "utf8", Text("caf\xC3\xA9 \xF0\x9F\x98\x80"));
    Save("TextFuzzer", "long", Bytes{255, 255, 255, 255, 188, 1, 0, 0, 0, 0, 0, 0, 2, 0xC3, 0xA9});
    Save("NamesFuzzer", "path", Text("!/home/a b./con/x?y:z/\xFF\xEF\x80\x81/..//long.name.txt"));
    Save("NamesFuzzer", "native", Text("\x04 lpt1.dat. "));
    Save("IFFFuzzer", "flat", WriteTSL(STSLFile()));
    Save("IFFFuzzer", "nested", WriteLOP2(SLOP2File()));
    return 0;
}

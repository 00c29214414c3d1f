// What minihost.c does, by the header for C++, and a hash of the slices' samples.
#include <LoopLibrary.hpp>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    if (argc != 2) {
        return 1;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const LoopLibrary::Library library;
    LoopLibrary::Loop loop = LoopLibrary::Loop::Open(bytes);
    const LOPInfo info = loop.GetInfo();
    std::printf("%.3f BPM, %d slices\n", info.fLoopTempo / 1000.0,
                static_cast<int>(info.fSliceCount));
    loop.SetOutputSampleRate(48000);
    uint64_t hash = 14695981039346656037U; // FNV-1a
    for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
        for (const float sample : loop.RenderSlice(slice).fLeft) {
            uint32_t bits = 0;
            std::memcpy(&bits, &sample, sizeof bits);
            hash = (hash ^ bits) * 1099511628211U;
        }
    }
    std::printf("sound %08x\n", static_cast<unsigned>(hash ^ (hash >> 32)));
    return 0;
}

// What minihost.c does, by the header for C++.
#include <LoopLibrary.hpp>

#include <cstdio>
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
    const LoopLibrary::Loop loop = LoopLibrary::Loop::Open(bytes);
    const LOPInfo info = loop.GetInfo();
    std::printf("%.3f BPM, %d slices\n", info.fLoopTempo / 1000.0,
                static_cast<int>(info.fSliceCount));
    return 0;
}

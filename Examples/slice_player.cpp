// Keeps time to the frame: renders the slices of a loop once, on a worker thread, and places them
// by the host's own clock. The tempo changes in the middle, on the very frame. The "device" is a
// raw file of interleaved 32-bit floats.
//
// usage: slice_player LOOPFILE OUT.f32 BPM LAST_BPM
#include <LoopLibrary.hpp>
#include <SliceScheduler.hpp>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr int kRate = 48000;
constexpr int kBlock = 441;
constexpr int kBlocks = 1000;

// All that the audio thread needs, complete before it starts.
struct Rendered {
    std::vector<LoopLibrary::Audio> fAudio;
    std::vector<LoopLibrary::PlacedSlice> fSlices;
    double fQuarters = 0.0;
};

// Worker thread: the only one that calls the library.
Rendered Render(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LoopLibrary::Library library;
    LoopLibrary::Loop loop = LoopLibrary::Loop::Open(bytes);
    loop.SetOutputSampleRate(kRate);
    const LOPInfo info = loop.GetInfo();

    Rendered rendered;
    rendered.fQuarters = static_cast<double>(info.fPPQLength) / LOP_PPQ;
    for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
        rendered.fAudio.push_back(loop.RenderSlice(slice));
    }
    for (int32_t slice = 0; slice < info.fSliceCount; ++slice) {
        const LoopLibrary::Audio& audio = rendered.fAudio[static_cast<std::size_t>(slice)];
        LoopLibrary::PlacedSlice placed;
        placed.fLeft = audio.fLeft.data();
        placed.fRight = audio.fRight.empty() ? nullptr : audio.fRight.data();
        placed.fFrames = static_cast<int64_t>(audio.fLeft.size());
        placed.fQuarter = static_cast<double>(loop.GetSliceInfo(slice).fPPQPosition) / LOP_PPQ;
        rendered.fSlices.push_back(placed);
    }
    return rendered;
}

// What a host would run on its audio thread: arithmetic alone.
void AudioCallback(LoopLibrary::SliceScheduler& scheduler, LoopLibrary::TempoMapPlayer& clock,
                   float* left, float* right) noexcept {
    std::fill(left, left + kBlock, 0.0F);
    std::fill(right, right + kBlock, 0.0F);
    clock.Render(scheduler, left, right, kBlock);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: slice_player LOOPFILE OUT.f32 BPM LAST_BPM\n");
        return 1;
    }
    try {
        const Rendered rendered =
            std::async(std::launch::async, Render, std::string(argv[1])).get();
        LoopLibrary::SliceScheduler scheduler;
        scheduler.SetSampleRate(kRate);
        scheduler.SetLoop(rendered.fSlices.data(), rendered.fSlices.size(), rendered.fQuarters);
        // The tempo changes once, in the middle of the loop.
        const LoopLibrary::TempoPoint map[] = {{0.0, std::atof(argv[3])},
                                               {rendered.fQuarters / 2, std::atof(argv[4])}};
        LoopLibrary::TempoMapPlayer clock(map, 2, kRate);

        std::ofstream device(argv[2], std::ios::binary);
        float left[kBlock];
        float right[kBlock];
        for (int block = 0; block < kBlocks; ++block) {
            AudioCallback(scheduler, clock, left, right);
            for (int i = 0; i < kBlock; ++i) {
                device.write(reinterpret_cast<const char*>(&left[i]), sizeof left[i]);
                device.write(reinterpret_cast<const char*>(&right[i]), sizeof right[i]);
            }
        }
        if (!device.flush()) {
            std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
        return 2;
    }
}

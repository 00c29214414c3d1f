// Eight sounding voices of the sampler, started and rendered block by block.
#pragma once

#include <cstdint>

namespace LoopBench {

enum class EPlace : int32_t { kBody, kTail, kOneFrameTail };

struct SEightVoices {
    int32_t fStereo = 1;
    int32_t fRate = 44100; // of the output; the sample has 44100
    EPlace fPlace = EPlace::kBody;
    int32_t fEqualizer = 0;
};

constexpr int32_t kMeasuredVoices = 8;
constexpr int32_t kMeasuredBlocks = 200; // of one run

extern "C" {
/// Seconds of this thread's CPU for kMeasuredBlocks blocks of 64 frames. A negative answer: a voice
/// that should have been measured did not sound.
double LoopBenchRunEightVoices(const LoopBench::SEightVoices* what);
}

} // namespace LoopBench

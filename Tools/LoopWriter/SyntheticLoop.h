#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NSLoopWriter {

// Test audio by integer arithmetic alone: the same samples on every platform and compiler. All
// signals take the depth in bits, 2 to 24, and stay within its range.

using Plane = std::vector<int32_t>;

/// The generator behind all noise here: the high 24 bits of each next state, as a signed value.
class CNoise {
public:
    explicit CNoise(uint32_t seed) : fState(seed) {}
    int32_t Next() {
        fState = fState * 1664525u + 1013904223u;
        return static_cast<int32_t>(fState >> 8) - 0x800000;
    }

private:
    uint32_t fState;
};

/// White noise over the whole range.
Plane MakeNoise(size_t frames, int32_t bitDepth, uint32_t seed);
/// Both ends of the range in turn, `halfPeriod` frames each; 1 is half the sample rate.
Plane MakeFullScaleSquare(size_t frames, int32_t bitDepth, size_t halfPeriod);
/// A sine of half the full scale; `rotation` is its angle per frame in 2^-16 radians.
Plane MakeSine(size_t frames, int32_t bitDepth, int32_t rotation);
/// Silence with a full-scale click that dies away every `distance` frames.
Plane MakeTransients(size_t frames, int32_t bitDepth, size_t distance);

struct SDrumLoopOptions {
    uint32_t fSampleRate = 44100;
    int32_t fBitDepth = 16;
    bool fStereo = false;
    int32_t fBeats = 4;
    uint32_t fTempo = 120000; // thousandths of a beat per minute
    uint32_t fSeed = 1;
};

/// A drum pattern in eighth notes: kick, hat, snare, hat. The channels differ in the hats.
struct SDrumLoop {
    Plane fLeft;
    Plane fRight; // empty: mono
    uint32_t fFramesPerHit = 0;
    std::vector<uint32_t> fHits; // first frame of each eighth note
};

SDrumLoop MakeDrumLoop(const SDrumLoopOptions& options);

} // namespace NSLoopWriter

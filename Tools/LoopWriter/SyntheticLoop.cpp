#include "LoopWriter/SyntheticLoop.h"

#include <algorithm>

namespace NSLoopWriter {

namespace {

struct SRange {
    explicit SRange(int32_t bitDepth) : fMax((1 << (bitDepth - 1)) - 1), fMin(-fMax - 1) {}
    int32_t Clip(int64_t value) const {
        return static_cast<int32_t>(std::clamp<int64_t>(value, fMin, fMax));
    }
    int32_t fMax;
    int32_t fMin;
};

// Turns a point round a circle, nearly: the error shifts the amplitude by parts in a thousand and
// does not grow. The angle is in 2^-16 radians.
class COscillator {
public:
    explicit COscillator(int64_t amplitude) : fX(amplitude << 16), fY(0) {}
    int64_t Next(int64_t angle) {
        fY += fX * angle >> 16;
        fX -= fY * angle >> 16;
        return fY >> 16;
    }

private:
    int64_t fX, fY; // scaled by 2^16
};

// All hits work on a 24-bit scale and die away by `amplitude -= amplitude >> decay`.
void AddKick(Plane& plane, size_t start, size_t end) {
    COscillator oscillator(3000000);
    int64_t level = int64_t{1} << 30;
    int64_t angle = int64_t{2400} << 16; // about 260 Hz at 44100, falling to 50
    for (size_t i = start; i < end; ++i) {
        plane[i] += static_cast<int32_t>(oscillator.Next(angle >> 16) * level >> 29);
        level -= level >> 12;
        angle -= (angle - (int64_t{460} << 16)) >> 10;
    }
}

void AddNoiseHit(Plane& plane, size_t start, size_t end, CNoise& noise, int32_t shift,
                 int32_t decay, bool bright) {
    int64_t level = int64_t{1} << 30;
    int64_t last = 0;
    for (size_t i = start; i < end; ++i) {
        const int64_t next = noise.Next();
        const int64_t value = bright ? next - last : next + last;
        last = next;
        plane[i] += static_cast<int32_t>((value >> shift) * level >> 30);
        level -= level >> decay;
    }
}

} // namespace

Plane MakeNoise(size_t frames, int32_t bitDepth, uint32_t seed) {
    CNoise noise(seed);
    Plane plane(frames);
    for (int32_t& sample : plane) {
        sample = noise.Next() >> (24 - bitDepth);
    }
    return plane;
}

Plane MakeFullScaleSquare(size_t frames, int32_t bitDepth, size_t halfPeriod) {
    const SRange range(bitDepth);
    Plane plane(frames);
    for (size_t i = 0; i < frames; ++i) {
        plane[i] = i / halfPeriod % 2 == 0 ? range.fMax : range.fMin;
    }
    return plane;
}

Plane MakeSine(size_t frames, int32_t bitDepth, int32_t rotation) {
    const SRange range(bitDepth);
    COscillator oscillator(range.fMax / 2);
    Plane plane(frames);
    for (int32_t& sample : plane) {
        sample = range.Clip(oscillator.Next(rotation));
    }
    return plane;
}

Plane MakeTransients(size_t frames, int32_t bitDepth, size_t distance) {
    const SRange range(bitDepth);
    Plane plane(frames);
    for (size_t start = distance / 2; start < frames; start += distance) {
        int32_t level = range.fMax;
        for (size_t i = start; i < std::min(frames, start + distance) && level != 0; ++i) {
            plane[i] = level;
            level = -level / 2;
        }
    }
    return plane;
}

SDrumLoop MakeDrumLoop(const SDrumLoopOptions& options) {
    const uint32_t framesPerHit =
        static_cast<uint32_t>(uint64_t{options.fSampleRate} * 30000 / options.fTempo);
    const uint32_t hitCount = static_cast<uint32_t>(options.fBeats) * 2;
    const size_t frames = size_t{framesPerHit} * hitCount;

    SDrumLoop loop{Plane(frames), {}, framesPerHit, {}};
    Plane side(frames); // what the right channel hears otherwise
    CNoise noise(options.fSeed);
    for (uint32_t hit = 0; hit < hitCount; ++hit) {
        const size_t start = size_t{hit} * framesPerHit;
        const size_t end = start + framesPerHit;
        loop.fHits.push_back(static_cast<uint32_t>(start));
        if (hit % 2 != 0) {
            AddNoiseHit(loop.fLeft, start, end, noise, 4, 10, true);
            AddNoiseHit(side, start, end, noise, 5, 10, true);
        } else if (hit % 4 == 2) {
            AddNoiseHit(loop.fLeft, start, end, noise, 2, 11, false);
        } else {
            AddKick(loop.fLeft, start, end);
        }
    }

    const SRange range(options.fBitDepth);
    const int32_t shift = 24 - options.fBitDepth;
    if (options.fStereo) {
        loop.fRight.resize(frames);
        for (size_t i = 0; i < frames; ++i) {
            loop.fRight[i] = range.Clip(int64_t{loop.fLeft[i] - side[i]} >> shift);
        }
    }
    for (int32_t& sample : loop.fLeft) {
        sample = range.Clip(sample >> shift);
    }
    return loop;
}

} // namespace NSLoopWriter

#include "BreakLoop.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace {

constexpr double kRate = 44100.0;
constexpr double kTempo = 93.0;
constexpr int kSteps = 32; // sixteenths
constexpr double kSwing = 0.57;
constexpr double kFullScale = 8388607.0;

using Sound = std::vector<double>;

struct STrack {
    std::string_view fSteps; // a digit is a level of 1 to 9
    Sound fSound;
    double fPan; // -1 left to 1 right
};

size_t FrameOfStep(int step) {
    const int pairs = step / 2;
    const double position = pairs + (step % 2 != 0 ? kSwing : 0.0);
    return static_cast<size_t>(std::lround(position * 2.0 * kRate * 15.0 / kTempo));
}

Sound MakeSound(double seconds, auto&& valueAt) {
    Sound sound(static_cast<size_t>(seconds * kRate));
    const double fadeFrames = 0.004 * kRate;
    for (size_t i = 0; i < sound.size(); ++i) {
        const double fade = std::min(1.0, static_cast<double>(sound.size() - i) / fadeFrames);
        sound[i] = valueAt(static_cast<double>(i) / kRate) * fade;
    }
    return sound;
}

double Sine(double turns) {
    return std::sin(2.0 * std::numbers::pi * turns);
}

Sound MakeKick() {
    // The turns are the integral of a pitch that falls from 190 to 46 Hz.
    return MakeSound(0.32, [](double t) {
        const double turns = 46.0 * t + 144.0 * 0.026 * (1.0 - std::exp(-t / 0.026));
        return std::tanh(1.8 * Sine(turns) * std::exp(-t / 0.12));
    });
}

// A drum head that rings at `pitch` under noise of that brightness, 0 to 1.
Sound MakeNoiseDrum(uint32_t seed, double pitch, double tone, double bright, double decay) {
    double last = 0.0;
    return MakeSound(decay * 5.0, [&, noise = NSLoopWriter::CNoise(seed)](double t) mutable {
        const double next = noise.Next() / kFullScale;
        const double hiss = next - bright * last;
        last = next;
        return tone * Sine(pitch * t) * std::exp(-t / 0.05) + 0.5 * hiss * std::exp(-t / decay);
    });
}

Sound MakeBass(double pitch) {
    return MakeSound(0.42, [pitch](double t) {
        double value = 0.0;
        for (int partial = 1; partial <= 7; ++partial) {
            value += Sine(partial * pitch * t) / partial * std::exp(-t * 2.2 * (partial - 1));
        }
        return 0.75 * value * std::min(1.0, t / 0.004) * std::exp(-t / 0.5);
    });
}

std::vector<STrack> Tracks() {
    return {{"9.....7...9.....9..6....7.9.....", MakeKick(), 0.0},
            {"....8..3....8..2....8..3.2..8.43", MakeNoiseDrum(1, 186, 0.5, 0.35, 0.06), 0.1},
            {"7.5.7.5.7.5.7.557.5.7.5.7.5.7...", MakeNoiseDrum(2, 0, 0.0, 0.95, 0.012), -0.4},
            {"..............................7.", MakeNoiseDrum(3, 0, 0.0, 0.95, 0.075), -0.4},
            {"......4......4........4.....4...", MakeNoiseDrum(4, 1720, 0.5, 0.9, 0.006), 0.6},
            {"9.........7.....9...............", MakeBass(48.999), 0.0},
            {"......8...................8.....", MakeBass(58.27), 0.0},
            {"...................8............", MakeBass(65.406), 0.0}};
}

void Add(const STrack& track, int step, Sound& left, Sound& right) {
    const double level = 0.075 * (track.fSteps[static_cast<size_t>(step)] - '0');
    const size_t first = FrameOfStep(step);
    for (size_t i = 0; i < track.fSound.size(); ++i) {
        const size_t frame = (first + i) % left.size(); // what rings on goes round
        left[frame] += level * track.fSound[i] * std::min(1.0, 1.0 - track.fPan);
        right[frame] += level * track.fSound[i] * std::min(1.0, 1.0 + track.fPan);
    }
}

NSLoopWriter::Plane PlaneOf(const Sound& sound) {
    NSLoopWriter::Plane plane(sound.size());
    std::transform(sound.begin(), sound.end(), plane.begin(), [](double value) {
        return static_cast<int32_t>(std::lround(kFullScale * std::tanh(value)));
    });
    return plane;
}

} // namespace

NSLoopWriter::SDrumLoop MakeBreakLoop() {
    Sound left(FrameOfStep(kSteps));
    Sound right(left.size());
    NSLoopWriter::SDrumLoop loop;
    const std::vector<STrack> tracks = Tracks();
    for (int step = 0; step < kSteps; ++step) {
        bool isHit = false;
        for (const STrack& track : tracks) {
            if (track.fSteps[static_cast<size_t>(step)] != '.') {
                Add(track, step, left, right);
                isHit = true;
            }
        }
        if (isHit) {
            loop.fHits.push_back(static_cast<uint32_t>(FrameOfStep(step)));
        }
    }
    loop.fLeft = PlaneOf(left);
    loop.fRight = PlaneOf(right);
    return loop;
}

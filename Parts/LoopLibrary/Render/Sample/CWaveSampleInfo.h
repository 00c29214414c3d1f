// What a file tells about the audio that it stores.
#pragma once

#include <cstdint>

namespace NSLOPDLL {

constexpr int32_t kLoopMode_None = 13;
/// Loop points are known, but the sound is not meant to be looped.
constexpr int32_t kLoopMode_PointsOnly = 14;
constexpr int32_t kLoopMode_Looping = 15;

constexpr int32_t kLoopDirection_Forward = 0;
constexpr int32_t kLoopDirection_ForwardBackward = 1;

struct CWaveLoopInfo {
    int32_t fMode = kLoopMode_None;
    /// Counts with kLoopMode_Looping only.
    int32_t fDirection = kLoopDirection_Forward;
    /// In frames; the end lies behind the last frame of the loop.
    int32_t fStart = 0;
    int32_t fEnd = 0;
    /// MIDI notes, 0 to 127, and cents, -50 to 50.
    bool fHasRootNote = false;
    uint8_t fRootNote = 60;
    int8_t fDetune = 0;
    bool fHasNoteRange = false;
    uint8_t fLowNote = 0;
    uint8_t fHighNote = 127;
};

struct CWaveSampleInfo {
    uint16_t fChannels = 0;
    /// 8, 16, 20, 22 or 24; 0 when not known.
    int32_t fBitDepth = 0;
    /// Frames per second.
    int32_t fSampleRate = 0;
    int32_t fFrames = 0;
    CWaveLoopInfo fLoop = {};
};

} // namespace NSLOPDLL

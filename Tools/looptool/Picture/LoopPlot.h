#pragma once

#include "looptool/Audio/SAudio.h"
#include "looptool/Loop/LoopModel.h"
#include "looptool/Picture/ICanvas.h"

#include <string>

namespace NSLoopTool {

/// All that a picture of a loop shows.
struct SLoopPlot {
    std::string fName; // has passed SafeText
    double fTempo = 0.0;
    int32_t fNumerator = 4;
    int32_t fDenominator = 4;
    SLoopModel fModel;
    SAudio fAudio;

    int32_t GetTotalBeats() const { return fModel.fBars * fNumerator + fModel.fBeats; }
    /// Where a beat, counted from 0 at the loop's start, lies in the audio.
    double GetFrameOfBeat(double beat) const {
        return static_cast<double>(fModel.fLoopStart) +
               static_cast<double>(fModel.fLoopEnd - fModel.fLoopStart) * beat / GetTotalBeats();
    }
    /// "120 BPM   2 bars of 4/4   16 slices   stereo, 44100 Hz, 24 bits"
    std::string GetSummary() const;
};

SLoopPlot MakeLoopPlot(const CLoop& loop);

/// The lowest and highest sample of a channel in frames `first` to before `end`, full scale 1.0; of
/// at least one frame.
struct SPeaks {
    float fLow = 0.0f;
    float fHigh = 0.0f;
};
SPeaks PeaksOf(const SAudio& audio, size_t channel, double first, double end);

/// Draws the waveform of each channel with its slices, muted and hidden ones told apart, the loop
/// and its bars and beats.
void DrawLoopPlot(const SLoopPlot& plot, ICanvas& canvas, double width, double height, bool isDark);

/// The same in letters, so many to a line.
std::string AsciiPlot(const SLoopPlot& plot, size_t columns);

} // namespace NSLoopTool

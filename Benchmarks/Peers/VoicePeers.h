// Other engines that play samples, and resamplers, rendering at 48 kHz.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace LoopBench {

/// What a voice of 44.1 kHz costs.
struct SVoicePeer {
    std::string fName;
    /// Channel-frames for which fRun answers the seconds.
    double fUnits;
    std::function<double()> fRun;
};

/// Eight channels of a tracker module with the interpolation of 8 taps, less what no channel costs.
SVoicePeer OpenMptVoices();
/// Eight voices with the interpolation of 7th order, less what no voice costs.
SVoicePeer FluidSynthVoices();
/// A stream of one channel through a filter of 8 taps.
SVoicePeer SwresampleStream();
/// A stream of one channel through the fastest of the windowed kernels.
SVoicePeer SamplerateStream();

} // namespace LoopBench

#pragma once

#include "LoopLibrary.hpp"
#include "SliceScheduler.hpp"

#include <memory>
#include <string>
#include <vector>

/// The slices of a loop, rendered at the host's rate: all that the audio call plays. Made and freed
/// on a worker or before activation, never in the audio call.
class CLoadedLoop {
public:
    /// Reads and renders a file. Null when it cannot be read or is not a loop; `reason` then tells.
    /// Never throws.
    static std::unique_ptr<CLoadedLoop> Load(const std::string& path, double rate,
                                             std::string& reason) noexcept;

    const std::vector<LoopLibrary::PlacedSlice>& GetSlices() const { return fSlices; }
    double GetQuarters() const { return fQuarters; }

    /// For a list of loops that fade out or wait to be freed.
    CLoadedLoop* fNext = nullptr;
    /// Frames for which a loop that was replaced is still heard.
    int64_t fFadeLeft = 0;

private:
    std::vector<LoopLibrary::Audio> fAudio;
    std::vector<LoopLibrary::PlacedSlice> fSlices;
    double fQuarters = 0.0;
};

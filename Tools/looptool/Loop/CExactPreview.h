#pragma once

#include "looptool/Loop/CLoop.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NSLoopTool {

/// The loop at a tempo, again and again, out of its rendered slices: each placed to the frame that
/// is nearest to its exact time, however often the loop has gone round. What rings past the next
/// slice sounds on under it; sums are clipped to full scale.
class CExactPreview {
public:
    /// Renders all slices at the loop's output rate. `tempo` is in beats of the time signature per
    /// minute. Borrows nothing of the loop.
    CExactPreview(const CLoop& loop, double tempo);

    /// Frames of one pass, not rounded.
    double GetPassFrames() const { return fPassFrames; }

    /// Frames `first` to first + count into the planes from their start.
    void Render(uint64_t first, size_t count, std::vector<std::vector<float>>& planes) const;

private:
    struct SPlacedSlice {
        double fStart = 0.0; // frames from the start of a pass
        std::vector<std::vector<float>> fPlanes;
    };

    void AddSlice(const SPlacedSlice& slice, double passStart, uint64_t first, size_t count,
                  std::vector<std::vector<float>>& planes) const;

    double fPassFrames = 0.0;
    size_t fLongest = 0; // frames of the longest slice
    std::vector<SPlacedSlice> fSlices;
};

/// Frames of the loop at its output rate and a tempo, not rounded.
double PassFrames(const CLoop& loop, double tempo);

} // namespace NSLoopTool

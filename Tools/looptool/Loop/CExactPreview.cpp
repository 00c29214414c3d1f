#include "looptool/Loop/CExactPreview.h"

#include "looptool/Console/CProgressBar.h"
#include "looptool/Loop/LoopModel.h"
#include "looptool/System/Interrupt.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

double PassFrames(const CLoop& loop, double tempo) {
    const LOPInfo& info = loop.GetInfo();
    const double quarters = static_cast<double>(info.fPPQLength) / LOP_PPQ;
    const double beats = quarters * info.fTimeSignatureDenominator / 4.0;
    return beats * 60.0 / tempo * loop.GetOutputSampleRate();
}

CExactPreview::CExactPreview(const CLoop& loop, double tempo)
    : fPassFrames(PassFrames(loop, tempo)) {
    const SLoopModel model = ReadLoopModel(loop);
    const auto length = static_cast<double>(model.fLoopEnd - model.fLoopStart);
    CProgressBar bar("rendering " + loop.GetName());
    for (const SMark& mark : model.fMarks) {
        if (mark.fSlice < 0) {
            continue;
        }
        StopIfInterrupted();
        SPlacedSlice slice;
        slice.fStart = static_cast<double>(mark.fFrame - model.fLoopStart) / length * fPassFrames;
        slice.fPlanes = loop.RenderSlice(mark.fSlice);
        fLongest = std::max(fLongest, slice.fPlanes.front().size());
        fSlices.push_back(std::move(slice));
        bar.Show(int64_t{100} * mark.fSlice / loop.GetInfo().fSliceCount);
    }
}

void CExactPreview::AddSlice(const SPlacedSlice& slice, double passStart, uint64_t first,
                             size_t count, std::vector<std::vector<float>>& planes) const {
    const int64_t start = std::llround(passStart + slice.fStart) - static_cast<int64_t>(first);
    const auto length = static_cast<int64_t>(slice.fPlanes.front().size());
    const int64_t from = std::max<int64_t>(start, 0);
    const int64_t end = std::min(start + length, static_cast<int64_t>(count));
    for (size_t channel = 0; channel < planes.size(); ++channel) {
        for (int64_t i = from; i < end; ++i) {
            planes[channel][static_cast<size_t>(i)] +=
                slice.fPlanes[channel][static_cast<size_t>(i - start)];
        }
    }
}

void CExactPreview::Render(uint64_t first, size_t count,
                           std::vector<std::vector<float>>& planes) const {
    for (std::vector<float>& plane : planes) {
        std::fill_n(plane.begin(), count, 0.0f);
    }
    // From the first pass of which a slice may still sound.
    const double oldest = static_cast<double>(first) - static_cast<double>(fLongest) - fPassFrames;
    double pass = std::max(std::floor(oldest / fPassFrames), 0.0);
    for (; pass * fPassFrames < static_cast<double>(first + count); pass += 1.0) {
        for (const SPlacedSlice& slice : fSlices) {
            AddSlice(slice, pass * fPassFrames, first, count, planes);
        }
    }
    for (std::vector<float>& plane : planes) {
        std::transform(plane.begin(), plane.begin() + static_cast<std::ptrdiff_t>(count),
                       plane.begin(), [](float value) { return std::clamp(value, -1.0f, 1.0f); });
    }
}

} // namespace NSLoopTool

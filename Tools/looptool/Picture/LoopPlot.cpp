#include "looptool/Picture/LoopPlot.h"

#include "looptool/Console/Numbers.h"
#include "looptool/Loop/StoredAudio.h"

#include "LoopLibrary/Public/CLOPObject.h"
#include "LoopLibrary/Public/LoopHandles.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

SLoopPlot MakeLoopPlot(const CLoop& loop) {
    const LOPInfo& info = loop.GetInfo();
    SLoopPlot plot;
    plot.fName = loop.GetName();
    plot.fTempo = info.fStoredTempo / 1000.0;
    plot.fNumerator = info.fTimeSignatureNumerator;
    plot.fDenominator = info.fTimeSignatureDenominator;
    plot.fModel = ReadLoopModel(loop);
    plot.fAudio =
        AudioOfSample(NSLOPDLL::ObjectFromHandle(loop.GetHandle())->GetSequencer().GetWaveSample());
    return plot;
}

std::string SLoopPlot::GetSummary() const {
    const auto slices = std::count_if(fModel.fMarks.begin(), fModel.fMarks.end(),
                                      [](const SMark& mark) { return mark.fSlice >= 0; });
    return DecimalText(fTempo) + " BPM   " + std::to_string(fModel.fBars) +
           (fModel.fBars == 1 ? " bar" : " bars") +
           (fModel.fBeats > 0 ? " and " + std::to_string(fModel.fBeats) + " beats" : "") + " of " +
           std::to_string(fNumerator) + "/" + std::to_string(fDenominator) + "   " +
           std::to_string(slices) + (slices == 1 ? " slice   " : " slices   ") +
           (fAudio.fPlanes.size() == 2 ? "stereo, " : "mono, ") +
           std::to_string(fAudio.fSampleRate) + " Hz, " + std::to_string(fAudio.fBitDepth) +
           " bits";
}

SPeaks PeaksOf(const SAudio& audio, size_t channel, double first, double end) {
    const std::vector<int32_t>& plane = audio.fPlanes[channel];
    const auto most = static_cast<double>(plane.size());
    const auto from = static_cast<size_t>(std::clamp(std::floor(first), 0.0, most - 1.0));
    const auto to = static_cast<size_t>(std::clamp(std::ceil(end), first + 1.0, most));
    const auto [low, high] =
        std::minmax_element(plane.begin() + static_cast<std::ptrdiff_t>(from),
                            plane.begin() + static_cast<std::ptrdiff_t>(std::max(to, from + 1)));
    const float unit = 1.0f / static_cast<float>(int32_t{1} << (audio.fBitDepth - 1));
    return {static_cast<float>(*low) * unit, static_cast<float>(*high) * unit};
}

} // namespace NSLoopTool

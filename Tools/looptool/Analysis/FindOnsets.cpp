#include "looptool/Analysis/BeatGrid.h"
#include "looptool/Analysis/CSpectrum.h"
#include "looptool/Analysis/LoopAnalysis.h"
#include "looptool/Analysis/WalkBack.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace NSLoopTool {

namespace {

// Times in seconds.
constexpr double kWindow = 0.023;
constexpr double kHop = 0.0029;
constexpr double kLag = 0.0087;        // how far back a spectrum is compared
constexpr double kPeakReach = 0.03;    // a peak is the highest within
constexpr double kMeanReach = 0.10;    // and stands out of the mean within
constexpr double kBeforeStart = 0.006; // an attack so close to the end is the start's
constexpr double kNearest = 0.035;     // two onsets are no nearer

// The greatest rise of a loop. The threshold follows it half the way: hits of a loop have much in
// common, but not all.
constexpr double kUsualSteepest = 1.2;
constexpr double kLeastSteepest = 0.5; // a loop without attacks gets none by a low threshold

// Powers of 2 of the threshold.
constexpr double kOnGrid = -0.75; // of what begins on a sixteenth
constexpr double kOffGrid = 1.25; // and between two
// Of the strong onsets' strength that lies on the grid: where it counts for nothing, and in full.
constexpr double kNoGrid = 0.5;
constexpr double kSureGrid = 0.85;
constexpr double kStraighter = 0.03; // by how much a swung grid must fit better than a straight one

constexpr double kLowestBand = 30.0; // Hz
constexpr double kHighestBand = 17000.0;
constexpr double kBandsAnOctave = 12.0;
constexpr double kCompression = 1000.0; // of magnitudes before the logarithm, full scale 1

size_t FramesOf(double seconds, double rate) {
    return std::max<size_t>(1, static_cast<size_t>(std::lround(seconds * rate)));
}

// First bins of bands that are equally wide on the scale of pitch, each at least one bin.
std::vector<size_t> BandEdges(size_t windowSize, double rate) {
    const double binWidth = rate / static_cast<double>(windowSize);
    std::vector<size_t> edges;
    const double top = std::min(kHighestBand, rate / 2);
    double pitch = kLowestBand;
    while (pitch < top) {
        const auto bin = static_cast<size_t>(std::lround(pitch / binWidth));
        if (edges.empty() || bin > edges.back()) {
            edges.push_back(bin);
        }
        pitch *= std::exp2(1.0 / kBandsAnOctave);
    }
    edges.push_back(std::min(windowSize / 2 + 1, static_cast<size_t>(top / binWidth) + 1));
    return edges;
}

// How much louder the bands have become at each hop, all round the circle. A band is compared with
// the loudest of itself and its neighbours a little earlier, so that a gliding tone is no onset.
class CNovelty {
public:
    CNovelty(std::span<const float> mono, double rate, double scale)
        : fMono(mono), fScale(scale), fSpectrum(std::bit_ceil(FramesOf(kWindow, rate) * 4 / 5)),
          fEdges(BandEdges(fSpectrum.GetSize(), rate)) {
        const double hop = kHop * rate;
        const size_t hops = std::max<size_t>(
            1, static_cast<size_t>(std::lround(static_cast<double>(mono.size()) / hop)));
        fHop = static_cast<double>(mono.size()) / static_cast<double>(hops);
        const size_t lag = FramesOf(kLag, rate / fHop);
        for (size_t i = 0; i < hops; ++i) {
            fBands.push_back(Bands(i));
        }
        for (size_t i = 0; i < hops; ++i) {
            fValues.push_back(Rise(fBands[(i + hops * lag - lag) % hops], fBands[i]));
        }
    }

    std::span<const double> GetValues() const { return fValues; }
    // Frames from one value to the next.
    double GetHop() const { return fHop; }

private:
    std::vector<double> Bands(size_t hop) {
        const size_t size = fSpectrum.GetSize();
        const auto middle = static_cast<size_t>(std::lround(static_cast<double>(hop) * fHop));
        std::vector<double> frames(size);
        const size_t count = fMono.size();
        size_t at = (middle + count * (size / count + 1) - size / 2) % count;
        for (double& frame : frames) {
            frame = static_cast<double>(fMono[at]) * fScale;
            at = at + 1 == count ? 0 : at + 1;
        }
        const std::span<const double> magnitudes = fSpectrum.Analyze(frames);
        std::vector<double> bands;
        for (size_t band = 0; band + 1 < fEdges.size(); ++band) {
            double sum = 0.0;
            for (size_t bin = fEdges[band]; bin < fEdges[band + 1]; ++bin) {
                sum += magnitudes[bin];
            }
            sum *= 4.0 / static_cast<double>(size);
            bands.push_back(std::log10(1.0 + kCompression * sum));
        }
        return bands;
    }

    static double Rise(std::span<const double> before, std::span<const double> now) {
        double sum = 0.0;
        for (size_t band = 0; band < now.size(); ++band) {
            const size_t low = band > 0 ? band - 1 : 0;
            const size_t high = std::min(band + 2, now.size());
            double loudest = 0.0;
            for (size_t near = low; near < high; ++near) {
                loudest = std::max(loudest, before[near]);
            }
            sum += std::max(0.0, now[band] - loudest);
        }
        return sum / static_cast<double>(now.size());
    }

    std::span<const float> fMono;
    double fScale;
    CSpectrum fSpectrum;
    std::vector<size_t> fEdges;
    double fHop = 1.0;
    std::vector<std::vector<double>> fBands;
    std::vector<double> fValues;
};

// The mean rise above which a peak counts, in units of the bands' logarithm.
double Threshold(int sensitivity) {
    return 0.67 * std::exp2(-static_cast<double>(std::clamp(sensitivity, 0, 99)) / 16.0);
}

struct SPeak {
    double fFrame;
    double fHeight;
};

// Peaks that stand out by more than the threshold.
std::vector<SPeak> FindPeaks(std::span<const double> values, double hop, double rate,
                             double threshold) {
    const auto count = static_cast<ptrdiff_t>(values.size());
    const auto reach = static_cast<ptrdiff_t>(FramesOf(kPeakReach, rate / hop));
    const auto meanReach = static_cast<ptrdiff_t>(FramesOf(kMeanReach, rate / hop));
    const auto at = [&](ptrdiff_t i) {
        return values[static_cast<size_t>((i % count + count) % count)];
    };
    std::vector<SPeak> peaks;
    for (ptrdiff_t i = 0; i < count; ++i) {
        const double value = at(i);
        double sum = 0.0;
        bool highest = true;
        for (ptrdiff_t near = -meanReach; near <= meanReach; ++near) {
            sum += at(i + near);
            if (std::abs(near) <= reach && near != 0 && std::abs(near) < count) {
                highest = highest && (near < 0 ? at(i + near) < value : at(i + near) <= value);
            }
        }
        const double mean = sum / static_cast<double>(2 * meanReach + 1);
        if (highest && value > mean + threshold) {
            peaks.push_back({static_cast<double>(i) * hop, value - mean});
        }
    }
    return peaks;
}

// The share of the strong onsets' strength that lies on the grid of sixteenths, felt as it fits
// best.
struct SGridFit {
    SFeel fFeel;
    double fShare = 0.0;
};

SGridFit FitGrid(std::span<const SOnset> onsets, double framesOfBeat, double rate,
                 double threshold) {
    SGridFit best;
    for (const SFeel& feel : BeatFeels()) {
        double on = 0.0;
        double all = 0.0;
        for (const SOnset& onset : onsets) {
            if (onset.fStrength > threshold) {
                const double weight = std::sqrt(onset.fStrength);
                on += weight * NearestPlace(onset.fFrame, framesOfBeat, rate, feel).fCloseness;
                all += weight;
            }
        }
        if (on > best.fShare * all * (1.0 + kStraighter)) {
            best = {feel, on / all};
        }
    }
    return best;
}

// Drops what stands out too little for where it lies.
void KeepByGrid(std::vector<SOnset>& onsets, double framesOfBeat, double rate, double threshold) {
    const SGridFit fit = FitGrid(onsets, framesOfBeat, rate, threshold);
    const double trust = std::clamp((fit.fShare - kNoGrid) / (kSureGrid - kNoGrid), 0.0, 1.0);
    std::erase_if(onsets, [&](const SOnset& onset) {
        const double closeness =
            NearestPlace(onset.fFrame, framesOfBeat, rate, fit.fFeel).fCloseness;
        return onset.fStrength <
               threshold * std::exp2(trust * (kOffGrid - (kOffGrid - kOnGrid) * closeness));
    });
}

// Two detected times may lead back to one attack.
std::vector<SOnset> Apart(std::span<const SOnset> onsets, int64_t frames, int64_t nearest) {
    std::vector<SOnset> apart;
    for (const SOnset& onset : onsets) {
        if (!apart.empty() && onset.fFrame - apart.back().fFrame < nearest) {
            apart.back().fStrength = std::max(apart.back().fStrength, onset.fStrength);
        } else {
            apart.push_back(onset);
        }
    }
    if (apart.size() > 1 && apart.front().fFrame + frames - apart.back().fFrame < nearest) {
        apart.pop_back();
    }
    return apart;
}

} // namespace

std::vector<SOnset> FindOnsets(std::span<const float> mono, int rate, int sensitivity,
                               double quarters) {
    float peak = 0.0F;
    for (const float sample : mono) {
        peak = std::max(peak, std::abs(sample));
    }
    if (peak < 1e-5F || mono.size() < FramesOf(kWindow, rate)) {
        return {};
    }
    const CNovelty novelty(mono, rate, 1.0 / static_cast<double>(peak));
    const std::span<const double> values = novelty.GetValues();
    const double steepest = *std::max_element(values.begin(), values.end());
    const double threshold =
        Threshold(sensitivity) * std::sqrt(std::max(steepest, kLeastSteepest) / kUsualSteepest);
    std::vector<SOnset> onsets;
    const auto ahead = static_cast<int64_t>(FramesOf(kBeforeStart, rate));
    for (const SPeak& found : FindPeaks(values, novelty.GetHop(), rate,
                                        threshold * (quarters > 0.0 ? std::exp2(kOnGrid) : 1.0))) {
        const int64_t frame = WalkBack(mono, rate, found.fFrame);
        // Just before the loop's end begins the hit of its start: the loop was cut a little late.
        const bool ofStart = static_cast<int64_t>(mono.size()) - frame < ahead;
        onsets.push_back({ofStart ? 0 : frame, found.fHeight});
    }
    std::sort(onsets.begin(), onsets.end(),
              [](const SOnset& a, const SOnset& b) { return a.fFrame < b.fFrame; });
    if (quarters > 0.0) {
        KeepByGrid(onsets, static_cast<double>(mono.size()) / quarters, rate, threshold);
    }
    onsets = Apart(onsets, static_cast<int64_t>(mono.size()),
                   static_cast<int64_t>(FramesOf(kNearest, rate)));
    double strongest = 0.0;
    for (const SOnset& onset : onsets) {
        strongest = std::max(strongest, onset.fStrength);
    }
    for (SOnset& onset : onsets) {
        onset.fStrength /= strongest;
    }
    return onsets;
}

} // namespace NSLoopTool

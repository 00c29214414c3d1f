#include "looptool/Picture/LoopPlot.h"

#include "looptool/Console/SafeText.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

namespace {

constexpr double kMargin = 24.0;
constexpr double kHeadHeight = 62.0;
constexpr double kLabelHeight = 18.0; // numbers of slices above the waveform
constexpr double kRulerHeight = 34.0;
constexpr double kChannelGap = 8.0;

struct SPalette {
    Colour fPaper, fPanel, fText, fFaint, fGrid, fWave, fWaveOdd, fSlice, fMuted, fHidden;
};

// The waveform changes its shade from slice to slice, so that cuts show where marks crowd.
constexpr SPalette kLight{0xFFFFFF, 0xF4F6F9, 0x1B2430, 0x6B7785, 0xD5DBE3,
                          0x2F6FB5, 0x5B97D6, 0xD1495B, 0x9AA5B1, 0xB9C2CC};
constexpr SPalette kDark{0x12171E, 0x1A212B, 0xE8EDF3, 0x8F9BA8, 0x303A47,
                         0x5CA4EE, 0x3A78BA, 0xFF7A85, 0x7C8896, 0x55606C};

class CDrawing {
public:
    CDrawing(const SLoopPlot& plot, ICanvas& canvas, double width, double height, bool isDark)
        : fPlot(plot), fCanvas(canvas), fWidth(width), fHeight(height),
          fPalette(isDark ? kDark : kLight), fLeft(kMargin), fRight(width - kMargin),
          fTop(kHeadHeight + kLabelHeight), fBottom(height - kRulerHeight) {}

    void Draw() {
        fCanvas.FillRectangle({0, 0}, fWidth, fHeight, fPalette.fPaper, 1.0);
        fCanvas.FillRectangle({fLeft, fTop}, fRight - fLeft, fBottom - fTop, fPalette.fPanel, 1.0);
        DrawHead();
        DrawBeats();
        DrawWaves();
        DrawOutside();
        DrawMarks();
    }

private:
    double XOfFrame(double frame) const {
        return fLeft + (fRight - fLeft) * frame / static_cast<double>(fPlot.fModel.fFrames);
    }

    void DrawHead() {
        constexpr size_t kNameColumns = 60;
        fCanvas.DrawText({fLeft, 30}, KeepEnd(fPlot.fName, kNameColumns), 18, fPalette.fText,
                         EAlign::kLeft, true);
        fCanvas.DrawText({fLeft, 52}, fPlot.GetSummary(), 12, fPalette.fFaint, EAlign::kLeft,
                         false);
        double x = fRight;
        x = DrawLegend(x, "hidden", fPalette.fHidden, 2.0);
        x = DrawLegend(x, "muted", fPalette.fMuted, 6.0);
        DrawLegend(x, "slice", fPalette.fSlice, 0.0);
    }
    double DrawLegend(double right, const char* word, Colour colour, double dash) {
        constexpr double kWordWidth = 44.0;
        constexpr double kLineWidth = 16.0;
        const double x = right - kWordWidth - kLineWidth;
        fCanvas.DrawLine({x, 48}, {x + kLineWidth, 48}, 2.0, colour, dash);
        fCanvas.DrawText({x + kLineWidth + 5, 52}, word, 11, fPalette.fFaint, EAlign::kLeft, false);
        return x - 8.0;
    }

    // Bars always, beats and the numbers of bars where there is room.
    void DrawBeats() {
        const int32_t beats = fPlot.GetTotalBeats();
        const double beatWidth =
            XOfFrame(fPlot.GetFrameOfBeat(1)) - XOfFrame(fPlot.GetFrameOfBeat(0));
        const double barWidth = beatWidth * fPlot.fNumerator;
        const auto step = std::max<int32_t>(1, static_cast<int32_t>(std::ceil(24.0 / barWidth)));
        for (int32_t beat = 0; beat <= beats; ++beat) {
            const bool isBar = beat % fPlot.fNumerator == 0;
            const int32_t bar = beat / fPlot.fNumerator;
            const double x = XOfFrame(fPlot.GetFrameOfBeat(beat));
            if (isBar || beatWidth >= 6.0) {
                fCanvas.DrawLine({x, isBar ? fTop : fBottom - 6.0}, {x, fBottom + (isBar ? 8 : 4)},
                                 1.0, isBar ? fPalette.fFaint : fPalette.fGrid, 0.0);
            }
            if (isBar && beat < beats && bar % step == 0) {
                fCanvas.DrawText({x + 3, fBottom + 20}, std::to_string(bar + 1), 12, fPalette.fText,
                                 EAlign::kLeft, true);
            } else if (!isBar && beatWidth >= 28.0) {
                fCanvas.DrawText({x, fBottom + 18},
                                 std::to_string(bar + 1) + "." +
                                     std::to_string(beat % fPlot.fNumerator + 1),
                                 10, fPalette.fFaint, EAlign::kMiddle, false);
            }
        }
    }

    void DrawWaves() {
        const size_t channels = fPlot.fAudio.fPlanes.size();
        const double height = (fBottom - fTop - kChannelGap * static_cast<double>(channels - 1)) /
                              static_cast<double>(channels);
        for (size_t channel = 0; channel < channels; ++channel) {
            const double top = fTop + static_cast<double>(channel) * (height + kChannelGap);
            const double middle = top + height / 2.0;
            fCanvas.DrawLine({fLeft, middle}, {fRight, middle}, 1.0, fPalette.fGrid, 0.0);
            double from = 0.0;
            bool isOdd = false;
            for (const double end : SectionEnds()) {
                DrawWave(channel, from, end, middle, height / 2.0 - 3.0,
                         isOdd ? fPalette.fWaveOdd : fPalette.fWave);
                from = end;
                isOdd = !isOdd;
            }
        }
    }
    std::vector<double> SectionEnds() const {
        std::vector<double> ends;
        for (const SMark& mark : fPlot.fModel.fMarks) {
            if (mark.fSlice >= 0 && mark.fFrame > 0) {
                ends.push_back(static_cast<double>(mark.fFrame));
            }
        }
        ends.push_back(static_cast<double>(fPlot.fModel.fFrames));
        return ends;
    }
    // A closed outline: the highest samples of each half pixel there, the lowest back.
    void DrawWave(size_t channel, double first, double end, double middle, double reach,
                  Colour colour) {
        constexpr double kStep = 0.5;
        const double framesPerPixel = static_cast<double>(fPlot.fModel.fFrames) / (fRight - fLeft);
        std::vector<SPoint> upper;
        std::vector<SPoint> lower;
        const double right = XOfFrame(end);
        double x = XOfFrame(first);
        while (x < right) {
            const double from = (x - fLeft) * framesPerPixel;
            const SPeaks peaks =
                PeaksOf(fPlot.fAudio, channel, from, std::min(from + kStep * framesPerPixel, end));
            const double high = middle - static_cast<double>(peaks.fHigh) * reach;
            const double low = middle - static_cast<double>(peaks.fLow) * reach;
            constexpr double kLeastHalf = 0.3; // silence stays a line
            upper.push_back({x, std::min(high, middle - kLeastHalf)});
            lower.push_back({x, std::max(low, middle + kLeastHalf)});
            x += kStep;
        }
        if (upper.empty()) {
            return;
        }
        upper.push_back({right, upper.back().fY});
        lower.push_back({right, lower.back().fY});
        upper.insert(upper.end(), lower.rbegin(), lower.rend());
        fCanvas.FillPolygon(upper, colour);
    }

    // The audio outside the loop stands back.
    void DrawOutside() {
        constexpr double kVeil = 0.7;
        const double start = XOfFrame(static_cast<double>(fPlot.fModel.fLoopStart));
        const double end = XOfFrame(static_cast<double>(fPlot.fModel.fLoopEnd));
        if (start > fLeft) {
            fCanvas.FillRectangle({fLeft, fTop}, start - fLeft, fBottom - fTop, fPalette.fPaper,
                                  kVeil);
        }
        if (end < fRight) {
            fCanvas.FillRectangle({end, fTop}, fRight - end, fBottom - fTop, fPalette.fPaper,
                                  kVeil);
        }
    }

    void DrawMarks() {
        constexpr double kNumberWidth = 14.0;
        double free = fLeft - kNumberWidth; // where the last number ends
        for (const SMark& mark : fPlot.fModel.fMarks) {
            const double x = XOfFrame(static_cast<double>(mark.fFrame));
            const bool isHidden = !mark.fIsActive;
            const Colour colour = isHidden        ? fPalette.fHidden
                                  : mark.fIsMuted ? fPalette.fMuted
                                                  : fPalette.fSlice;
            const double dash = isHidden ? 2.0 : (mark.fIsMuted ? 6.0 : 0.0);
            fCanvas.DrawLine({x, fTop - 6.0}, {x, fBottom}, isHidden ? 1.0 : 1.2, colour, dash);
            if (mark.fSlice >= 0 && x >= free + kNumberWidth) {
                fCanvas.DrawText({x + 2.0, fTop - 6.0}, std::to_string(mark.fSlice), 10, colour,
                                 EAlign::kLeft, false);
                free = x;
            }
        }
    }

    const SLoopPlot& fPlot;
    ICanvas& fCanvas;
    const double fWidth;
    const double fHeight;
    const SPalette& fPalette;
    const double fLeft;
    const double fRight;
    const double fTop;
    const double fBottom;
};

} // namespace

void DrawLoopPlot(const SLoopPlot& plot, ICanvas& canvas, double width, double height,
                  bool isDark) {
    CDrawing(plot, canvas, width, height, isDark).Draw();
}

} // namespace NSLoopTool

#include "looptool/Picture/LoopPlot.h"

#include "looptool/Console/SafeText.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

namespace {

constexpr int kHalfRows = 6;

// The louder of the channels.
SPeaks PeaksOfAll(const SAudio& audio, double first, double end) {
    SPeaks all;
    for (size_t channel = 0; channel < audio.fPlanes.size(); ++channel) {
        const SPeaks peaks = PeaksOf(audio, channel, first, end);
        all = {std::min(all.fLow, peaks.fLow), std::max(all.fHigh, peaks.fHigh)};
    }
    return all;
}

size_t ColumnOf(const SLoopPlot& plot, double frame, size_t columns) {
    const double column =
        frame / static_cast<double>(plot.fModel.fFrames) * static_cast<double>(columns);
    return std::min(static_cast<size_t>(std::max(column, 0.0)), columns - 1);
}

// "|" a slice, "m" a muted one, "." a hidden one.
std::string MarkLine(const SLoopPlot& plot, size_t columns) {
    std::string line(columns, ' ');
    for (const SMark& mark : plot.fModel.fMarks) {
        char& place = line[ColumnOf(plot, static_cast<double>(mark.fFrame), columns)];
        const char sign = !mark.fIsActive ? '.' : (mark.fIsMuted ? 'm' : '|');
        place = place == '|' ? place : sign;
    }
    return line;
}

std::string RulerLine(const SLoopPlot& plot, size_t columns) {
    std::string line(columns, ' ');
    for (int32_t beat = 0; beat < plot.GetTotalBeats(); ++beat) {
        const size_t column = ColumnOf(plot, plot.GetFrameOfBeat(beat), columns);
        if (beat % plot.fNumerator != 0) {
            line[column] = line[column] == ' ' ? '\'' : line[column];
            continue;
        }
        const std::string bar = std::to_string(beat / plot.fNumerator + 1);
        line.replace(column, std::min(bar.size(), columns - column), bar, 0, columns - column);
    }
    return line;
}

} // namespace

std::string AsciiPlot(const SLoopPlot& plot, size_t columns) {
    const auto width = static_cast<double>(columns);
    const double framesPerColumn = static_cast<double>(plot.fModel.fFrames) / width;
    std::vector<std::string> rows(size_t{2} * kHalfRows, std::string(columns, ' '));
    for (size_t column = 0; column < columns; ++column) {
        const double first = static_cast<double>(column) * framesPerColumn;
        const SPeaks peaks = PeaksOfAll(plot.fAudio, first, first + framesPerColumn);
        const auto up =
            static_cast<int>(std::ceil(static_cast<double>(peaks.fHigh) * kHalfRows - 0.1));
        const auto down =
            static_cast<int>(std::ceil(-static_cast<double>(peaks.fLow) * kHalfRows - 0.1));
        for (int row = -std::max(up, 0); row < std::max(down, 0); ++row) {
            const int index = std::clamp(row + kHalfRows, 0, 2 * kHalfRows - 1);
            rows[static_cast<size_t>(index)][column] = '#';
        }
    }
    std::string text = KeepEnd(plot.fName, columns) + "\n" + plot.GetSummary() + "\n" +
                       MarkLine(plot, columns) + "\n";
    for (std::string& row : rows) {
        row.erase(row.find_last_not_of(' ') + 1);
        text += row + "\n";
    }
    return text + RulerLine(plot, columns) + "\n";
}

} // namespace NSLoopTool

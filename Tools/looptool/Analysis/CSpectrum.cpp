#include "looptool/Analysis/CSpectrum.h"

#include <cmath>
#include <numbers>

namespace NSLoopTool {

CSpectrum::CSpectrum(size_t size)
    : fWindow(size), fTwiddles(size / 2), fReversed(size), fBins(size), fMagnitudes(size / 2 + 1) {
    const double turn = 2.0 * std::numbers::pi / static_cast<double>(size);
    for (size_t i = 0; i < size; ++i) {
        fWindow[i] = 0.5 - 0.5 * std::cos(turn * static_cast<double>(i));
        fReversed[i] = (fReversed[i / 2] / 2) | ((i & 1) * (size / 2));
    }
    for (size_t i = 0; i < fTwiddles.size(); ++i) {
        fTwiddles[i] = std::polar(1.0, -turn * static_cast<double>(i));
    }
}

std::span<const double> CSpectrum::Analyze(std::span<const double> frames) {
    for (size_t i = 0; i < fBins.size(); ++i) {
        fBins[fReversed[i]] = frames[i] * fWindow[i];
    }
    Transform();
    for (size_t i = 0; i < fMagnitudes.size(); ++i) {
        fMagnitudes[i] = std::abs(fBins[i]);
    }
    return fMagnitudes;
}

void CSpectrum::Transform() {
    const size_t size = fBins.size();
    for (size_t half = 1; half < size; half *= 2) {
        const size_t stride = size / (2 * half);
        for (size_t start = 0; start < size; start += 2 * half) {
            for (size_t i = 0; i < half; ++i) {
                const std::complex<double> odd = fBins[start + half + i] * fTwiddles[i * stride];
                fBins[start + half + i] = fBins[start + i] - odd;
                fBins[start + i] += odd;
            }
        }
    }
}

} // namespace NSLoopTool

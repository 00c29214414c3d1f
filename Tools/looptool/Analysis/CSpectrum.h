#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

namespace NSLoopTool {

/// Magnitudes of short stretches of audio, by a fast Fourier transform of a Hann window.
class CSpectrum {
public:
    /// `size` frames a stretch: a power of two, at least 4.
    explicit CSpectrum(size_t size);

    size_t GetSize() const { return fWindow.size(); }
    /// The magnitudes of the bins 0 to size / 2 for `size` frames; valid until the next call.
    std::span<const double> Analyze(std::span<const double> frames);

private:
    void Transform();

    std::vector<double> fWindow;
    std::vector<std::complex<double>> fTwiddles;
    std::vector<size_t> fReversed;
    std::vector<std::complex<double>> fBins;
    std::vector<double> fMagnitudes;
};

} // namespace NSLoopTool

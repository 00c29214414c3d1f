#include "Tests/Host/Listenings.h"

namespace {

template <class Change>
Bytes Changed(int32_t bitDepth, bool stereo, Change change) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions(bitDepth, stereo));
    change(file);
    return WriteLOP2(file);
}

} // namespace

std::vector<SListening> Listenings() {
    using NSLoopWriter::SLOP2File;
    const auto equalize = [](SLOP2File& file) {
        file.fEqualizer.fEnabled = 1;
        file.fEqualizer.fLowFrequency = 120;
        file.fEqualizer.fBand1Gain = 9000;
        file.fEqualizer.fBand2Gain = -12000;
        file.fEqualizer.fHighFrequency = 9000;
    };
    const auto compress = [](SLOP2File& file) {
        file.fCompressor.fEnabled = 1;
        file.fCompressor.fThreshold = 30;
        file.fCompressor.fRatio = 100;
        file.fCompressor.fAttack = 150;
    };
    const auto shape = [](SLOP2File& file) {
        file.fTransientShaper.fEnabled = 1;
        file.fTransientShaper.fAttack = 40;
        file.fTransientShaper.fDecay = 380;
        file.fTransientShaper.fAmount = 70;
    };
    const auto all = [&](SLOP2File& file) {
        equalize(file);
        compress(file);
        shape(file);
        file.fGeneralInfo.fTranspose = -350;
        file.fGeneralInfo.fGateLevel = 200;
    };
    const auto transpose = [](SLOP2File& file) { file.fGeneralInfo.fTranspose = 731; };
    // One of the factors that C libraries' own float functions round apart.
    const auto release = [&](SLOP2File& file) {
        compress(file);
        file.fCompressor.fRelease = 222;
        file.fTransientShaper.fEnabled = 1;
        file.fTransientShaper.fDecay = 222;
        file.fTransientShaper.fAmount = 100;
    };
    return {{"plain", DrumLOP2(), 44100},
            {"half rate", DrumLOP2(24, false), 22050},
            {"high rate", DrumLOP2(24), 96000},
            {"transposed", Changed(16, true, transpose), 48000},
            {"equalizer", Changed(16, true, equalize), 44100},
            {"compressor", Changed(24, false, compress), 44100},
            {"shaper", Changed(16, false, shape), 48000},
            {"everything", Changed(24, true, all), 88200},
            {"release", Changed(24, true, release), 44100},
            {"older kind", DrumTSL(), 32000},
            {"oldest kind", DrumLOP(), 44100}};
}

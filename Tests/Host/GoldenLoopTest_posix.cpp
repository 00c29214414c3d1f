#include "Tests/Host/HostLoop.h"

#include <cstring>

namespace {

uint64_t Hash(const Planes& planes) {
    uint64_t hash = 0xCBF29CE484222325U;
    for (const std::vector<float>& plane : planes) {
        for (const float sample : plane) {
            uint32_t bits = 0;
            std::memcpy(&bits, &sample, sizeof bits);
            for (int shift = 0; shift < 32; shift += 8) {
                hash = (hash ^ ((bits >> shift) & 0xFF)) * 0x100000001B3U;
            }
        }
    }
    return hash;
}

// A loop with everything on: equalizer, compressor, shaper, transpose, gate, another output rate.
Bytes EverythingLOP2() {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions(24));
    file.fEqualizer.fEnabled = 1;
    file.fEqualizer.fBand1Gain = 6000;
    file.fEqualizer.fBand2Gain = -9000;
    file.fCompressor.fEnabled = 1;
    file.fCompressor.fThreshold = 40;
    file.fCompressor.fRatio = 90;
    file.fCompressor.fAttack = 100;
    file.fTransientShaper.fEnabled = 1;
    file.fTransientShaper.fAttack = 30;
    file.fTransientShaper.fDecay = 400;
    file.fTransientShaper.fAmount = 60;
    file.fGeneralInfo.fTranspose = -350;
    file.fGeneralInfo.fGateLevel = 200;
    return WriteLOP2(file);
}

// The value is this library's own output; that gcc and clang, with and without optimisation, on
// every instruction set reach the same one is what it shows. The C runtime of Windows rounds some
// powers and cosines differently.
TEST_F(CHostTest, TheGoldenLoopSoundsTheSameOnEveryCompiler) {
    const CHostLoop loop(EverythingLOP2());
    ASSERT_EQ(LOPSetOutputSampleRate(loop.Get(), 48000), kLOPResult_OK);
    ASSERT_EQ(LOPSetPreviewTempo(loop.Get(), 104729), kLOPResult_OK);
    ASSERT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    Planes heard = loop.RenderPreview(120000, 997);
    for (int32_t slice = 0; slice < loop.GetInfo().fSliceCount; ++slice) {
        for (std::vector<float>& plane : loop.RenderSlice(slice)) {
            heard.push_back(std::move(plane));
        }
    }
    EXPECT_EQ(Hash(heard), 0x75F17A2BE5F17075U);
}

} // namespace

#include "Tests/Host/FloatingPointControl.h"
#include "Tests/Host/HostLoop.h"

// A host's floating-point mode neither changes a sample nor is changed by a call.

namespace {

Planes ListenUnder(uint64_t mode) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fEqualizer.fEnabled = 1;
    file.fEqualizer.fBand1Gain = 3000;
    const Bytes bytes = WriteLOP2(file);
    const uint64_t before = GetFloatingPointControl();
    SetFloatingPointControl(mode);
    Planes heard;
    {
        const CHostLoop loop(bytes);
        LOPSetOutputSampleRate(loop.Get(), 48000);
        LOPStartPreview(loop.Get());
        heard = loop.RenderPreview(30000, 441);
        heard.push_back(loop.RenderSlice(1)[0]);
        heard.push_back({static_cast<float>(loop.GetInfo().fLoopTempo)});
    }
    EXPECT_EQ(GetFloatingPointControl(), mode);
    SetFloatingPointControl(before);
    return heard;
}

TEST_F(CHostTest, TheHostsFloatingPointModeDoesNotMatter) {
    const uint64_t usual = GetFloatingPointControl();
    const Planes expected = ListenUnder(usual);
    for (const SFloatingPointMode& mode : GetOtherFloatingPointModes()) {
        EXPECT_TRUE(ListenUnder(mode.fControl) == expected) << mode.fName;
    }
}

} // namespace

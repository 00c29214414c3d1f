#include "Tests/Host/HostLoop.h"

#include <xmmintrin.h>

// A host's floating-point mode neither changes a sample nor is changed by a call.

namespace {

Planes ListenUnder(uint32_t mode) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fEqualizer.fEnabled = 1;
    file.fEqualizer.fBand1Gain = 3000;
    const Bytes bytes = WriteLOP2(file);
    const uint32_t before = _mm_getcsr();
    _mm_setcsr(mode);
    Planes heard;
    {
        const CHostLoop loop(bytes);
        LOPSetOutputSampleRate(loop.Get(), 48000);
        LOPStartPreview(loop.Get());
        heard = loop.RenderPreview(30000, 441);
        heard.push_back(loop.RenderSlice(1)[0]);
        heard.push_back({static_cast<float>(loop.GetInfo().fLoopTempo)});
    }
    EXPECT_EQ(_mm_getcsr(), mode);
    _mm_setcsr(before);
    return heard;
}

TEST_F(CHostTest, TheHostsFloatingPointModeDoesNotMatter) {
    const Planes expected = ListenUnder(0x1F80);
    struct SMode {
        const char* fName;
        uint32_t fControl;
    };
    for (const SMode& mode :
         {SMode{"flush to zero, denormals are zero", 0x1F80 | 0x8040},
          SMode{"down", 0x1F80 | 0x2000}, SMode{"up", 0x1F80 | 0x4000},
          SMode{"toward zero", 0x1F80 | 0x6000}, SMode{"with a sticky flag", 0x1F80 | 0x0020}}) {
        EXPECT_TRUE(ListenUnder(mode.fControl) == expected) << mode.fName;
    }
}

} // namespace

#include "Tests/Host/HostLoop.h"

#include <windows.h>

namespace {

TEST_F(CHostTest, CallsOnALoopKeepTheLastErrorOfTheHost) {
    const CHostLoop loop(DrumLOP2());
    SetLastError(1234);
    loop.GetInfo();
    LOPSetPreviewTempo(loop.Get(), 90000);
    LOPStartPreview(loop.Get());
    loop.RenderPreview(1000, 100);
    LOPStopPreview(loop.Get());
    loop.RenderSlice(0);
    EXPECT_EQ(GetLastError(), 1234U);
}

} // namespace

#include "Debug/Symbols/StackTrace.h"

#include <gtest/gtest.h>

namespace NSDebugPackage {

namespace {

TEST(StackTrace, FramesThatNobodyKnows) {
    SStackTrace trace;
    trace.fCount = 1;
    trace.fFrames[0] = reinterpret_cast<void*>(0x12AB);
    EXPECT_EQ(PrintStackTrace(trace), std::vector<std::string>{"(0) : 00000000000012AB + 0x0"});
    trace.fCount = 51;
    EXPECT_EQ(PrintStackTrace(trace), std::vector<std::string>{"*** Invalid stack trace data ***"});
}

[[gnu::noinline]] int Recurse(int depth, SStackTrace& trace) {
    if (depth == 0) {
        CaptureStackTrace(trace);
        return 0;
    }
    const int below = Recurse(depth - 1, trace);
    asm volatile("" : : : "memory"); // keeps the recursion from becoming a loop
    return below + 1;
}

TEST(StackTrace, HasFiftyFramesAtMost) {
    SStackTrace trace;
    EXPECT_EQ(Recurse(100, trace), 100);
    EXPECT_EQ(trace.fCount, 50U);
}

} // namespace
} // namespace NSDebugPackage

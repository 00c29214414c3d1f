#include "Debug/StackTrace.h"

#include "Debug/SymbolEngine.h"

#include <gtest/gtest.h>

namespace NSDebugPackage {

[[gnu::noinline]] void TraceFromHere(SStackTrace& trace) {
    CaptureStackTrace(trace);
    asm volatile("" : : : "memory"); // keeps the call from becoming a jump
}

namespace {

TEST(StackTrace, NamesTheCallingFunction) {
    InitSymbols();
    InitSymbols();
    ExitSymbols(); // one user is left
    SStackTrace trace;
    TraceFromHere(trace);
    ASSERT_GE(trace.fCount, 2U);
    const auto lines = PrintStackTrace(trace);
    ASSERT_EQ(lines.size(), trace.fCount);
    EXPECT_NE(lines[0].find("TraceFromHere"), std::string::npos) << lines[0];
    EXPECT_NE(lines[0].find(") : "), std::string::npos);
    EXPECT_NE(lines[0].find(" + 0x"), std::string::npos);
    ExitSymbols();
}

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
    return Recurse(depth - 1, trace) + 1;
}

TEST(StackTrace, HasFiftyFramesAtMost) {
    SStackTrace trace;
    EXPECT_EQ(Recurse(100, trace), 100);
    EXPECT_EQ(trace.fCount, 50U);
}

} // namespace
} // namespace NSDebugPackage

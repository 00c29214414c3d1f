#include "Debug/Symbols/StackTrace.h"
#include "Debug/Symbols/SymbolEngine.h"

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

} // namespace
} // namespace NSDebugPackage

#include "Debug/Symbols/StackTrace.h"
#include "Debug/Symbols/SymbolEngine.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace NSDebugPackage {

// The system reads no symbols of this compiler, but those that modules export.
TEST(StackTrace, NamesExportedFunctions) {
    InitSymbols();
    InitSymbols();
    ExitSymbols(); // one user is left
    SStackTrace trace;
    trace.fCount = 1;
    trace.fFrames[0] =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetTickCount"));
    EXPECT_EQ(PrintStackTrace(trace), std::vector<std::string>{"(0) : GetTickCount + 0x0"});
    ExitSymbols();
}

} // namespace NSDebugPackage

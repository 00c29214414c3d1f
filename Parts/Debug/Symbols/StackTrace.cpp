#include "Debug/Symbols/StackTrace.h"

#include "Debug/Symbols/SymbolEngine.h"

#include <cinttypes>
#include <cstdio>

namespace NSDebugPackage {

namespace {

std::string PrintFrame(const void* address) {
    SCodeSymbol symbol = FindCodeSymbol(address);
    if (symbol.fName.empty()) {
        char digits[24];
        std::snprintf(digits, sizeof digits, "%016" PRIXPTR, reinterpret_cast<uintptr_t>(address));
        symbol.fName = digits;
        symbol.fOffset = 0;
    }
    char offset[24];
    std::snprintf(offset, sizeof offset, " + 0x%" PRIx64, symbol.fOffset);
    return symbol.fSource + "(" + std::to_string(symbol.fLine) +
           ") : " + symbol.fName.substr(0, kLongestSymbolName) + offset;
}

} // namespace

[[gnu::noinline]] void CaptureStackTrace(SStackTrace& trace) {
    const CSymbolLock lock;
    trace.fCount =
        CaptureFrames(__builtin_return_address(0), trace.fFrames.data(), kMostStackFrames);
}

std::vector<std::string> PrintStackTrace(const SStackTrace& trace) {
    if (trace.fCount > kMostStackFrames) {
        return {"*** Invalid stack trace data ***"};
    }
    const CSymbolLock lock;
    std::vector<std::string> lines;
    for (uint32_t i = 0; i < trace.fCount; ++i) {
        lines.push_back(PrintFrame(trace.fFrames[i]));
    }
    return lines;
}

} // namespace NSDebugPackage

#include "Debug/Symbols/SymbolEngine.h"

namespace NSDebugPackage {

// Traces are empty. That is the usual state here and no failure to start.
bool StartSymbolEngine() {
    return true;
}

void EndSymbolEngine() {}

SCodeSymbol FindCodeSymbol(const void* /*address*/) {
    return {};
}

uint32_t CaptureFrames(const void* /*first*/, void** /*frames*/, uint32_t /*limit*/) {
    return 0;
}

} // namespace NSDebugPackage

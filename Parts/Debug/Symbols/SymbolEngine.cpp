#include "Debug/Symbols/SymbolEngine.h"

#include "Debug/Platform/DebugPlatform.h"

namespace NSDebugPackage {

namespace {

int gInitCount = 0; // under the symbol lock

// One for all engines of the module's life: a lock that went with its engine could be held by a
// late user while the next engine starts under another.
NSSupport::CPlatformMutex& GetSymbolLock() {
    static NSSupport::CPlatformMutex mutex;
    return mutex;
}

} // namespace

void InitSymbols() {
    const CSymbolLock lock;
    if (gInitCount == 0 && !StartSymbolEngine()) {
        SendToDebugOutput("DebugPackage::DebugWinInitUtils: SymInitialize failed!");
    }
    ++gInitCount;
}

void ExitSymbols() {
    const CSymbolLock lock;
    if (gInitCount > 0 && --gInitCount == 0) {
        EndSymbolEngine();
    }
}

CSymbolLock::CSymbolLock() : fLock(GetSymbolLock()) {}

} // namespace NSDebugPackage

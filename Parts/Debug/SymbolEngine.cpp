#include "Debug/SymbolEngine.h"

#include "Debug/DebugPlatform.h"
#include "Support/CPlatformMutex.h"

#include <memory>
#include <mutex>

namespace NSDebugPackage {

namespace {

// Guards the count. The symbol lock itself lives as long as the engine.
std::mutex gCountMutex;
int gInitCount = 0;
std::unique_ptr<NSSupport::CPlatformMutex> gSymbolLock;

} // namespace

void InitSymbols() {
    const std::lock_guard<std::mutex> guard(gCountMutex);
    if (gInitCount == 0) {
        gSymbolLock = std::make_unique<NSSupport::CPlatformMutex>();
        if (!StartSymbolEngine()) {
            SendToDebugOutput("DebugPackage::DebugWinInitUtils: SymInitialize failed!");
        }
    }
    ++gInitCount;
}

void ExitSymbols() {
    const std::lock_guard<std::mutex> guard(gCountMutex);
    if (gInitCount > 0 && --gInitCount == 0) {
        EndSymbolEngine();
        gSymbolLock.reset();
    }
}

CSymbolLock::CSymbolLock() : fHeld(gSymbolLock != nullptr) {
    if (fHeld) {
        gSymbolLock->Lock();
    }
}

CSymbolLock::~CSymbolLock() {
    if (fHeld) {
        gSymbolLock->Unlock();
    }
}

} // namespace NSDebugPackage

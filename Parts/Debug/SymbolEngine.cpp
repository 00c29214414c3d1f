#include "Debug/SymbolEngine.h"

#include "Debug/DebugPlatform.h"

#include <mutex>

namespace NSDebugPackage {

namespace {

// Guards the count and the pointer. The symbol lock lives as long as the engine, or until its last
// user lets go of it.
std::mutex gCountMutex;
int gInitCount = 0;
std::shared_ptr<NSSupport::CPlatformMutex> gSymbolLock;

std::shared_ptr<NSSupport::CPlatformMutex> GetSymbolLock() {
    const std::lock_guard<std::mutex> guard(gCountMutex);
    return gSymbolLock;
}

} // namespace

void InitSymbols() {
    const std::lock_guard<std::mutex> guard(gCountMutex);
    if (gInitCount == 0) {
        gSymbolLock = std::make_shared<NSSupport::CPlatformMutex>();
        if (!StartSymbolEngine()) {
            SendToDebugOutput("DebugPackage::DebugWinInitUtils: SymInitialize failed!");
        }
    }
    ++gInitCount;
}

void ExitSymbols() {
    const std::lock_guard<std::mutex> guard(gCountMutex);
    if (gInitCount > 0 && --gInitCount == 0) {
        {
            const NSSupport::CMutexLock lock(*gSymbolLock);
            EndSymbolEngine();
        }
        gSymbolLock.reset();
    }
}

CSymbolLock::CSymbolLock() : fLock(GetSymbolLock()) {
    if (fLock) {
        fLock->Lock();
    }
}

CSymbolLock::~CSymbolLock() {
    if (fLock) {
        fLock->Unlock();
    }
}

} // namespace NSDebugPackage

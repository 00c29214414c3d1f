#include "Debug/Log/DebugPackage.h"

#include "Debug/Log/CDebugger.h"
#include "Debug/Log/LogFolders.h"
#include "Debug/Platform/DebugPlatform.h"
#include "Failure/Raising/Raise.h"
#include "Support/Threads/CPlatformMutex.h"

#include <atomic>
#include <map>
#include <memory>
#include <new>

namespace NSDebugPackage {

namespace {

using NSSupport::CMutexLock;
using DebuggerMap = std::map<std::string, std::shared_ptr<CDebugger>>;

struct SRegistry {
    NSSupport::CPlatformMutex fMutex;
    DebuggerMap fDebuggers; // below the mutex, so that it goes first
};

// Owned; null while the package is not started.
std::atomic<SRegistry*> gRegistry{nullptr};

std::shared_ptr<CDebugger> FindDebugger(const std::string& name) {
    SRegistry* const registry = gRegistry;
    if (registry == nullptr) {
        return nullptr;
    }
    const CMutexLock lock(registry->fMutex);
    const auto found = registry->fDebuggers.find(name);
    return found == registry->fDebuggers.end() ? nullptr : found->second;
}

} // namespace

void InitDebugPackage() {
    if (gRegistry != nullptr) {
        return;
    }
    auto registry = std::make_unique<SRegistry>();
    if (!AllocateThreadSlots()) {
        NSLichen::Raise(std::bad_alloc());
    }
    gRegistry = registry.release();
}

void CloseAllDebuggers() {
    std::unique_ptr<SRegistry> registry(gRegistry.exchange(nullptr));
    if (registry) {
        registry.reset(); // the debuggers write their last lines, for which they need the slots
        FreeThreadSlots();
    }
}

void OpenDebugger(const std::string& name, const std::string& title,
                  const std::string& logFolderName) {
    SRegistry* const registry = gRegistry;
    if (registry == nullptr) {
        return;
    }
    const CMutexLock lock(registry->fMutex);
    if (registry->fDebuggers.contains(name)) {
        return;
    }
    const auto debugger = std::make_shared<CDebugger>(name, title, 0);
    const std::string folder = GetDebugLogFolder(logFolderName);
    if (!folder.empty()) {
        debugger->AddLogFile(folder);
    }
    registry->fDebuggers.emplace(name, debugger);
}

void TraceToDebugger(const std::string& name, const char* text) {
    if (const auto debugger = FindDebugger(name)) {
        debugger->Trace({}, text);
    }
}

std::string GetDebuggerLogFileName(const std::string& name) {
    const auto debugger = FindDebugger(name);
    return debugger ? debugger->GetLogFileName() : std::string();
}

std::string GetDebuggerLogFolder(const std::string& name) {
    const auto debugger = FindDebugger(name);
    return debugger ? debugger->GetLogFolder() : std::string();
}

void FlushAllDebuggers() {
    SRegistry* const registry = gRegistry;
    if (registry == nullptr) {
        return;
    }
    // Not under the registry's lock: a flush waits for the lines under way, and what writes those
    // may look for a debugger by name.
    DebuggerMap debuggers;
    {
        const CMutexLock lock(registry->fMutex);
        debuggers = registry->fDebuggers;
    }
    for (const auto& [name, debugger] : debuggers) {
        debugger->Flush();
    }
}

} // namespace NSDebugPackage

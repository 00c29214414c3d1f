#include "Debug/Log/LogThread.h"

#include "Debug/Platform/DebugPlatform.h"

#include <atomic>

namespace NSDebugPackage {

namespace {

constexpr uint32_t kFirstNoThread = 0xFFFFFFFE;
constexpr uint32_t kNoThread = 0xFFFFFFFF;

std::atomic<uint32_t> gLogThread{kNoThread};

} // namespace

void SetLogThread() noexcept {
    gLogThread = GetCurrentThreadNumber();
}

void ClearLogThread() noexcept {
    gLogThread = kNoThread;
}

bool IsLogThread() noexcept {
    const uint32_t thread = gLogThread;
    return thread >= kFirstNoThread || thread == GetCurrentThreadNumber();
}

} // namespace NSDebugPackage

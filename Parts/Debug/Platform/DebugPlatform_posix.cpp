#include "Debug/Platform/DebugPlatform.h"

#include "Debug/Platform/WriteAll_posix.h"

#include <unistd.h>

#include <atomic>
#include <cstring>

namespace NSDebugPackage {

namespace {

// 0 while there are no slots; otherwise which allocation they belong to.
std::atomic<uint32_t> gGeneration{0};
uint32_t gLastGeneration = 0;

struct SSlots {
    uint32_t fGeneration;
    intptr_t fValues[kThreadSlotCount];
};

// In the static block of each thread: keys of the thread library and the usual model of a shared
// library may allocate on a thread's first access.
[[gnu::tls_model("initial-exec")]] thread_local SSlots gSlots;

} // namespace

void SendToDebugOutput(const char* text) noexcept {
    WriteAll(STDERR_FILENO, text, std::strlen(text));
}

uint32_t GetCurrentThreadNumber() noexcept {
    return static_cast<uint32_t>(gettid());
}

bool AllocateThreadSlots() noexcept {
    gGeneration = ++gLastGeneration;
    return true;
}

void FreeThreadSlots() noexcept {
    gGeneration = 0;
}

intptr_t GetThreadSlot(int slot) noexcept {
    const uint32_t generation = gGeneration.load(std::memory_order_relaxed);
    return generation != 0 && gSlots.fGeneration == generation ? gSlots.fValues[slot] : 0;
}

void SetThreadSlot(int slot, intptr_t value) noexcept {
    const uint32_t generation = gGeneration.load(std::memory_order_relaxed);
    if (generation == 0) {
        return;
    }
    if (gSlots.fGeneration != generation) {
        gSlots = {generation, {}};
    }
    gSlots.fValues[slot] = value;
}

} // namespace NSDebugPackage

#include "Debug/Platform/DebugPlatform.h"

#include "Debug/Platform/WriteAll_posix.h"

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstring>

namespace NSDebugPackage {

namespace {

// Keys of the thread library and no thread-local variables: the library then has no thread-local
// segment, and loads where a host has used up the room for those.
std::array<pthread_key_t, kThreadSlotCount> gKeys{};
std::atomic<bool> gHasKeys{false};

} // namespace

void SendToDebugOutput(const char* text) noexcept {
    WriteAll(STDERR_FILENO, text, std::strlen(text));
}

uint32_t GetCurrentThreadNumber() noexcept {
    return static_cast<uint32_t>(gettid());
}

bool AllocateThreadSlots() noexcept {
    for (size_t i = 0; i < gKeys.size(); ++i) {
        if (pthread_key_create(&gKeys[i], nullptr) != 0) {
            while (i > 0) {
                pthread_key_delete(gKeys[--i]);
            }
            return false;
        }
    }
    gHasKeys.store(true, std::memory_order_release);
    return true;
}

void FreeThreadSlots() noexcept {
    if (gHasKeys.exchange(false)) {
        for (const pthread_key_t key : gKeys) {
            pthread_key_delete(key);
        }
    }
}

intptr_t GetThreadSlot(int slot) noexcept {
    if (!gHasKeys.load(std::memory_order_acquire)) {
        return 0;
    }
    return reinterpret_cast<intptr_t>(pthread_getspecific(gKeys[static_cast<size_t>(slot)]));
}

void SetThreadSlot(int slot, intptr_t value) noexcept {
    if (gHasKeys.load(std::memory_order_acquire)) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the slot holds a number.
        pthread_setspecific(gKeys[static_cast<size_t>(slot)], reinterpret_cast<void*>(value));
    }
}

} // namespace NSDebugPackage

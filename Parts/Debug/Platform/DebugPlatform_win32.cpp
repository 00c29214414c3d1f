#include "Debug/Platform/DebugPlatform.h"

#include <windows.h>

namespace NSDebugPackage {

namespace {

DWORD gSlots[kThreadSlotCount] = {TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES, TLS_OUT_OF_INDEXES,
                                  TLS_OUT_OF_INDEXES};

} // namespace

void SendToDebugOutput(const char* text) noexcept {
    OutputDebugStringA(text);
}

uint32_t GetCurrentThreadNumber() noexcept {
    return GetCurrentThreadId();
}

bool AllocateThreadSlots() noexcept {
    for (DWORD& slot : gSlots) {
        slot = TlsAlloc();
        if (slot == TLS_OUT_OF_INDEXES) {
            FreeThreadSlots();
            return false;
        }
    }
    return true;
}

void FreeThreadSlots() noexcept {
    for (DWORD& slot : gSlots) {
        if (slot != TLS_OUT_OF_INDEXES) {
            TlsFree(slot);
            slot = TLS_OUT_OF_INDEXES;
        }
    }
}

intptr_t GetThreadSlot(int slot) noexcept {
    if (gSlots[slot] == TLS_OUT_OF_INDEXES) {
        return 0;
    }
    // The call clears the thread's last error, which is the host's.
    const DWORD lastError = GetLastError();
    const auto value = reinterpret_cast<intptr_t>(TlsGetValue(gSlots[slot]));
    SetLastError(lastError);
    return value;
}

void SetThreadSlot(int slot, intptr_t value) noexcept {
    if (gSlots[slot] != TLS_OUT_OF_INDEXES) {
        TlsSetValue(gSlots[slot], reinterpret_cast<void*>(value));
    }
}

} // namespace NSDebugPackage

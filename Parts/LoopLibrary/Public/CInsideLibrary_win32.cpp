#include "LoopLibrary/Public/CInsideLibrary.h"

#include "LoopLibrary/Public/ThreadSlot_win32.h"

#include <windows.h>

namespace NSLOPDLL {

namespace {

// thread_local is emulated by this compiler with a block of heap a thread, which the thread
// notifications of DllMain would make anew at every thread's end. A slot of the system needs none.
DWORD gSlot = TLS_OUT_OF_INDEXES;

void Add(intptr_t change) noexcept {
    if (gSlot != TLS_OUT_OF_INDEXES) {
        const intptr_t depth = reinterpret_cast<intptr_t>(TlsGetValue(gSlot));
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the slot holds a number.
        TlsSetValue(gSlot, reinterpret_cast<void*>(depth + change));
    }
}

} // namespace

void AllocateThreadSlot() noexcept {
    if (gSlot == TLS_OUT_OF_INDEXES) {
        gSlot = TlsAlloc();
    }
}

void FreeThreadSlot() noexcept {
    if (gSlot != TLS_OUT_OF_INDEXES) {
        TlsFree(gSlot);
        gSlot = TLS_OUT_OF_INDEXES;
    }
}

CInsideLibrary::CInsideLibrary() noexcept {
    Add(1);
}

CInsideLibrary::~CInsideLibrary() {
    Add(-1);
}

int32_t CInsideLibrary::GetDepth() noexcept {
    if (gSlot == TLS_OUT_OF_INDEXES) {
        return 0;
    }
    return static_cast<int32_t>(reinterpret_cast<intptr_t>(TlsGetValue(gSlot)));
}

} // namespace NSLOPDLL

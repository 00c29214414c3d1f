#include "LoopLibrary/Public/RuntimeThreadSlot_win32.h"

#include <pthread.h>
#include <windows.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the runtime's own names
extern "C" {

// What the loader calls in the thread runtime when threads and modules come and go.
extern PIMAGE_TLS_CALLBACK __xl_f;

// State of the runtime that it keeps to itself; the build makes the names public in a copy of it.
extern DWORD _pthread_tls;
extern pthread_rwlock_t _pthread_key_lock;

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace NSLOPDLL {

void FreeRuntimeThreadSlot(void* module) noexcept {
    // What was never used is as it was initialised, which each of these calls and the test knows.
    __xl_f(module, DLL_THREAD_DETACH, nullptr);
    pthread_rwlock_destroy(&_pthread_key_lock);
    if (_pthread_tls != TLS_OUT_OF_INDEXES) {
        TlsFree(_pthread_tls);
        _pthread_tls = TLS_OUT_OF_INDEXES;
    }
}

} // namespace NSLOPDLL

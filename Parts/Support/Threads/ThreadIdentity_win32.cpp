#include "Support/Threads/ThreadIdentity.h"

#include <windows.h>

namespace NSSupport {

uintptr_t ThreadIdentity() noexcept LOOP_REALTIME {
    return GetCurrentThreadId();
}

} // namespace NSSupport

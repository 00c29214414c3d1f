#include "Support/Threads/ThreadIdentity.h"

namespace NSSupport {

// The memory of a module without shared memory belongs to one thread.
uintptr_t ThreadIdentity() noexcept LOOP_REALTIME {
    return 1;
}

} // namespace NSSupport

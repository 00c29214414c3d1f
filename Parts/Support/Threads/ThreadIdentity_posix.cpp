#include "Support/Threads/ThreadIdentity.h"

#include <bit>
#include <pthread.h>

namespace NSSupport {

// A number or a pointer, depending on the system's C library; either holds the thread's address.
uintptr_t ThreadIdentity() noexcept LOOP_REALTIME {
    return std::bit_cast<uintptr_t>(pthread_self());
}

} // namespace NSSupport

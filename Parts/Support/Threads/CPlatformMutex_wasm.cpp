#include "Support/Threads/CPlatformMutex.h"

namespace NSSupport {

// The memory of a module without shared memory belongs to one thread, so a recursive mutex is
// always its own.
struct CPlatformMutex::SNative {};

CPlatformMutex::CPlatformMutex() = default;

CPlatformMutex::~CPlatformMutex() = default;

void CPlatformMutex::Lock(uint32_t /*firstWaitMilliseconds*/) {}

bool CPlatformMutex::TryLock() noexcept LOOP_REALTIME {
    return true;
}

void CPlatformMutex::Unlock() noexcept LOOP_REALTIME {}

} // namespace NSSupport

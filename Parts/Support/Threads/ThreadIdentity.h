#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSSupport {

/// Tells the calling thread from all others that live; never 0. No system call and no thread-local
/// storage of the library's own.
uintptr_t ThreadIdentity() noexcept LOOP_REALTIME;

} // namespace NSSupport

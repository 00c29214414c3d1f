// By the C library, which also does nothing where a processor has but one mode.

#include "Support/Threads/CFloatingPointMode.h"

#include <cfenv>
#include <cstring>

namespace NSSupport {

CFloatingPointMode::CFloatingPointMode() noexcept LOOP_REALTIME {
    std::fenv_t caller;
    static_assert(sizeof caller <= sizeof fSaved);
    std::fegetenv(&caller);
    std::memcpy(fSaved, &caller, sizeof caller);
    std::fesetenv(FE_DFL_ENV);
}

CFloatingPointMode::~CFloatingPointMode() noexcept LOOP_REALTIME {
    std::fenv_t caller;
    std::memcpy(&caller, fSaved, sizeof caller);
    std::fesetenv(&caller);
}

} // namespace NSSupport

#include "Support/Threads/CFloatingPointMode.h"

#include <xmmintrin.h>

namespace NSSupport {

namespace {

// All exceptions masked, no flag set, nearest, neither flush-to-zero nor denormals-are-zero.
constexpr uint32_t kDefaultControl = 0x1F80;

} // namespace

CFloatingPointMode::CFloatingPointMode() noexcept LOOP_REALTIME {
    fSaved[0] = _mm_getcsr();
    _mm_setcsr(kDefaultControl);
}

CFloatingPointMode::~CFloatingPointMode() noexcept LOOP_REALTIME {
    _mm_setcsr(static_cast<uint32_t>(fSaved[0]));
}

} // namespace NSSupport

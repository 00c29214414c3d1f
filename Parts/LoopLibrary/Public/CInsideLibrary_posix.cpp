#include "LoopLibrary/Public/CInsideLibrary.h"

namespace NSLOPDLL {

namespace {

thread_local int32_t gDepth = 0;

} // namespace

CInsideLibrary::CInsideLibrary() noexcept {
    ++gDepth;
}

CInsideLibrary::~CInsideLibrary() {
    --gDepth;
}

int32_t CInsideLibrary::GetDepth() noexcept {
    return gDepth;
}

} // namespace NSLOPDLL

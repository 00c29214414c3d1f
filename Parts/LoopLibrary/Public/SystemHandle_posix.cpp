#include "LoopLibrary/Public/SystemHandle.h"

namespace NSLOPDLL {

void* GetSystemHandle() noexcept {
    return nullptr;
}

} // namespace NSLOPDLL

#include "LoopLibrary/Public/CInsideLibrary.h"

#include "Support/Threads/ThreadIdentity.h"

namespace NSLOPDLL {

namespace {

// The identity of the thread that holds the mark, or 0. A cache line each, since threads on several
// processors come and go in neighbouring ones.
struct alignas(64) SMark {
    std::atomic<uintptr_t> fThread{0};
};

constinit SMark gMarks[CInsideLibrary::kMostMarks];

// Where a thread's search begins: identities differ in few bits, often far up.
uint32_t FirstMarkOf(uintptr_t thread) noexcept LOOP_REALTIME {
    const uint64_t mixed = uint64_t{thread} * 0x9E3779B97F4A7C15U; // 2^64 over the golden ratio
    return static_cast<uint32_t>(mixed >> 32) % CInsideLibrary::kMostMarks;
}

} // namespace

CInsideLibrary::CInsideLibrary() noexcept LOOP_REALTIME : fMark(nullptr) {
    const uintptr_t thread = NSSupport::ThreadIdentity();
    const uint32_t first = FirstMarkOf(thread);
    for (uint32_t i = 0; i < kMostMarks; ++i) {
        std::atomic<uintptr_t>& mark = gMarks[(first + i) % kMostMarks].fThread;
        uintptr_t free = 0;
        if (mark.load(std::memory_order_relaxed) == 0 &&
            mark.compare_exchange_strong(free, thread, std::memory_order_relaxed)) {
            fMark = &mark;
            return;
        }
    }
}

CInsideLibrary::~CInsideLibrary() noexcept LOOP_REALTIME {
    if (fMark != nullptr) {
        fMark->store(0, std::memory_order_relaxed);
    }
}

int32_t CInsideLibrary::GetDepth() noexcept LOOP_REALTIME {
    const uintptr_t thread = NSSupport::ThreadIdentity();
    int32_t depth = 0;
    for (const SMark& mark : gMarks) {
        depth += mark.fThread.load(std::memory_order_relaxed) == thread ? 1 : 0;
    }
    return depth;
}

} // namespace NSLOPDLL

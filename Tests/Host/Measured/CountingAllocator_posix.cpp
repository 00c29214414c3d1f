#include "Tests/Host/Measured/CountingAllocator.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int64_t> gTaken{0};
std::atomic<int64_t> gGiven{0};
thread_local int64_t gFailAt = -1;
thread_local int64_t gCount = 0;

void* Take(size_t size) {
    gTaken.fetch_add(1, std::memory_order_relaxed);
    const bool fails = gCount++ == gFailAt;
    return fails ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* TakeOrThrow(size_t size) {
    void* const block = Take(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void Give(void* block) noexcept {
    if (block != nullptr) {
        gGiven.fetch_add(1, std::memory_order_relaxed);
        std::free(block);
    }
}

} // namespace

#if defined(__SANITIZE_ADDRESS__)
int64_t CountedHeapCalls() {
    return gCount;
}
#else
namespace {

thread_local int64_t gHeapCalls = 0;

} // namespace

int64_t CountedHeapCalls() {
    return gHeapCalls;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names for what stands behind
extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void* __libc_realloc(void* block, size_t size);
extern "C" void* __libc_memalign(size_t alignment, size_t size);
extern "C" void __libc_free(void* block);
// NOLINTEND(bugprone-reserved-identifier)

extern "C" void* malloc(size_t size) noexcept {
    ++gHeapCalls;
    return __libc_malloc(size);
}

// Zeroed pages for audio come from here. What they take is not counted as taken, since free does
// not know what it gives, but a failure counts as one of operator new does.
extern "C" void* calloc(size_t count, size_t size) noexcept {
    ++gHeapCalls;
    if (gCount++ == gFailAt) {
        gTaken.fetch_add(1, std::memory_order_relaxed);
        return nullptr;
    }
    return __libc_calloc(count, size);
}

extern "C" void* realloc(void* block, size_t size) noexcept {
    ++gHeapCalls;
    return __libc_realloc(block, size);
}

extern "C" void* aligned_alloc(size_t alignment, size_t size) {
    ++gHeapCalls;
    return __libc_memalign(alignment, size);
}

extern "C" void free(void* block) noexcept {
    ++gHeapCalls;
    __libc_free(block);
}
#endif

SAllocationCounts GetAllocationCounts() {
    return {gTaken, gGiven};
}

void FailAllocation(int64_t index) {
    gFailAt = index;
    gCount = 0;
#if !defined(__SANITIZE_ADDRESS__)
    gHeapCalls = 0;
#endif
}

int64_t CountedAllocations() {
    return gCount;
}

void* operator new(size_t size) {
    return TakeOrThrow(size);
}
void* operator new[](size_t size) {
    return TakeOrThrow(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return Take(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return Take(size);
}
void operator delete(void* block) noexcept {
    Give(block);
}
void operator delete[](void* block) noexcept {
    Give(block);
}
void operator delete(void* block, size_t) noexcept {
    Give(block);
}
void operator delete[](void* block, size_t) noexcept {
    Give(block);
}

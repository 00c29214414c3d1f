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

#if !defined(__SANITIZE_ADDRESS__)
// Zeroed pages for audio come from here. What they take is not counted, since free is not watched,
// but a failure counts as one of operator new does.
extern "C" void* __libc_calloc(size_t count, size_t size); // NOLINT(bugprone-reserved-identifier)

extern "C" void* calloc(size_t count, size_t size) {
    if (gCount++ == gFailAt) {
        gTaken.fetch_add(1, std::memory_order_relaxed);
        return nullptr;
    }
    return __libc_calloc(count, size);
}
#endif

SAllocationCounts GetAllocationCounts() {
    return {gTaken, gGiven};
}

void FailAllocation(int64_t index) {
    gFailAt = index;
    gCount = 0;
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

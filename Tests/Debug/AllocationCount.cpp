#include "Tests/Debug/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {

thread_local uint64_t gCount = 0;

} // namespace

uint64_t GetAllocationCount() noexcept {
    return gCount;
}

// The array and nothrow forms of the standard library come here too.
void* operator new(size_t size) {
    ++gCount;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}

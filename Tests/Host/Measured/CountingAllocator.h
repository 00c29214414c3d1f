#pragma once

#include <cstdint>

// The test program's allocator: counts what is taken and given back, and fails on command. It
// stands in for operator new everywhere, so in the library too.

struct SAllocationCounts {
    int64_t fTaken;
    int64_t fGiven;
};

SAllocationCounts GetAllocationCounts();

// Lets allocation number `index` of this thread, counted from 0 and from now, fail with
// std::bad_alloc; all others succeed. A negative index lets none fail.
void FailAllocation(int64_t index);

// Allocations of this thread since FailAllocation.
int64_t CountedAllocations();

// Calls of this thread to malloc, free and their like since FailAllocation, whoever makes them.
// With the address sanitizer, which needs these for itself, allocations by operator new alone.
int64_t CountedHeapCalls();

// The address sanitizer maps memory and keeps thread-local storage of its own, which tests that
// deny both cannot tell from the library's.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitizerHasItsOwn = true;
#else
constexpr bool kSanitizerHasItsOwn = false;
#endif

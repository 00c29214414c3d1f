#pragma once

#include "Support/Threads/RealTime.h"

#include <atomic>
#include <cstdint>

namespace NSLOPDLL {

/// Marks for its scope that the calling thread is inside the library. Every export holds one for
/// its body. The marks are there for a debugger to read; no decision depends on them.
///
/// They stand in one table of fixed size and not in thread-local storage, which may allocate at a
/// thread's first use, or make the library fail to load when a host has used it up. Marks beyond
/// the table's size are not counted.
class CInsideLibrary {
public:
    static constexpr uint32_t kMostMarks = 128;

    CInsideLibrary() noexcept LOOP_REALTIME;
    ~CInsideLibrary() noexcept LOOP_REALTIME;
    CInsideLibrary(const CInsideLibrary&) = delete;
    CInsideLibrary& operator=(const CInsideLibrary&) = delete;

    /// How many marks the calling thread holds.
    static int32_t GetDepth() noexcept LOOP_REALTIME;

private:
    std::atomic<uintptr_t>* fMark; // null beyond the table's size
};

} // namespace NSLOPDLL

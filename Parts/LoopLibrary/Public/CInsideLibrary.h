#pragma once

#include <cstdint>

namespace NSLOPDLL {

/// Counts, for each thread, how deep it stands inside the library. Every export holds one for its
/// body. The count is there for a debugger to read; no decision depends on it. Real-time safe.
class CInsideLibrary {
public:
    CInsideLibrary() noexcept;
    ~CInsideLibrary();
    CInsideLibrary(const CInsideLibrary&) = delete;
    CInsideLibrary& operator=(const CInsideLibrary&) = delete;

    /// Depth of the calling thread.
    static int32_t GetDepth() noexcept;
};

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Tables/CDSPTables.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace NSLOPDLL {

/// Shares one CDSPTables per output rate among all samplers, by a count of references. All
/// operations may be called from any thread but the render thread; they hold an internal mutex and
/// call nothing out under it.
class CDSPTablesCache {
public:
    CDSPTablesCache() noexcept = default;
    CDSPTablesCache(const CDSPTablesCache&) = delete;
    CDSPTablesCache& operator=(const CDSPTablesCache&) = delete;
    virtual ~CDSPTablesCache();

    /// The process-wide instance. It is never destroyed, since a loop that was left open may use
    /// its tables to the very end of the process.
    static CDSPTablesCache& Instance() noexcept;

    /// The tables of `rate`, built if need be, with one more reference. On std::bad_alloc nothing
    /// has changed.
    const CDSPTables* Acquire(int32_t rate);
    /// The tables of `rate`; for an absent rate those of the newest entry, null only when there is
    /// none. Acquire first.
    const CDSPTables* Find(int32_t rate);
    /// Gives one reference back; the last one destroys the tables. Nothing for an absent rate.
    void Release(int32_t rate) noexcept;

    size_t GetEntryCount();
    /// References held on `rate`, 0 for an absent one.
    int32_t GetReferenceCount(int32_t rate);

private:
    using Entries = std::vector<std::unique_ptr<CDSPTables>>;

    Entries::iterator FindEntry(int32_t rate) noexcept;

    std::mutex fMutex;
    Entries fEntries;
};

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Tables/CDSPTables.h"
#include "LoopLibrary/Render/Tables/CDSPTablesCache.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>
#include <utility>

namespace NSLOPDLL {

/// One counted reference on the tables of a rate, or none. Giving it back may free the tables, so
/// that a render thread only ever exchanges handles, by Swap.
class CDSPTablesHandle {
public:
    CDSPTablesHandle() noexcept = default;
    /// Raises std::bad_alloc.
    explicit CDSPTablesHandle(int32_t rate) : fTables(CDSPTablesCache::Instance().Acquire(rate)) {}
    CDSPTablesHandle(CDSPTablesHandle&& other) noexcept { Swap(other); }
    CDSPTablesHandle& operator=(CDSPTablesHandle&&) = delete;
    ~CDSPTablesHandle() {
        if (fTables != nullptr) {
            CDSPTablesCache::Instance().Release(fTables->GetSampleRate());
        }
    }

    void Swap(CDSPTablesHandle& other) noexcept LOOP_REALTIME { std::swap(fTables, other.fTables); }

    const CDSPTables& operator*() const noexcept LOOP_REALTIME { return *fTables; }
    const CDSPTables* operator->() const noexcept LOOP_REALTIME { return fTables; }

private:
    const CDSPTables* fTables = nullptr;
};

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Tables/CDSPTables.h"
#include "LoopLibrary/Render/Tables/CDSPTablesCache.h"

#include <memory>

namespace NSLOPDLL {

/// Gives the cache one reference back, which may free the tables: not on a render thread.
struct COutputRateTablesRelease {
    void operator()(const CDSPTables* tables) const noexcept {
        CDSPTablesCache::Instance().Release(tables->GetSampleRate());
    }
};

/// All that a change of the output rate needs memory for: one reference on the tables of a rate, on
/// its way from the control side to a sampler. Null holds none.
using COutputRateTables = std::unique_ptr<const CDSPTables, COutputRateTablesRelease>;

} // namespace NSLOPDLL

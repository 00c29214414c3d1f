#include "LoopLibrary/Render/Tables/CDSPTablesCache.h"

#include <algorithm>
#include <new>

namespace NSLOPDLL {

CDSPTablesCache::~CDSPTablesCache() = default;

CDSPTablesCache& CDSPTablesCache::Instance() noexcept {
    // In static storage and never destroyed. With the last entry gone it holds no memory, so that
    // loading and unloading the library again and again leaves nothing behind.
    alignas(CDSPTablesCache) static std::byte storage[sizeof(CDSPTablesCache)];
    static CDSPTablesCache& instance = *new (storage) CDSPTablesCache;
    return instance;
}

CDSPTablesCache::Entries::iterator CDSPTablesCache::FindEntry(int32_t rate) noexcept {
    return std::find_if(fEntries.begin(), fEntries.end(),
                        [rate](const auto& entry) { return entry->GetSampleRate() == rate; });
}

const CDSPTables* CDSPTablesCache::Acquire(int32_t rate) {
    const std::scoped_lock lock(fMutex);
    auto entry = FindEntry(rate);
    if (entry == fEntries.end()) {
        fEntries.push_back(std::make_unique<CDSPTables>(rate));
        entry = fEntries.end() - 1;
    }
    ++(*entry)->fRefCount;
    return entry->get();
}

const CDSPTables* CDSPTablesCache::Find(int32_t rate) {
    const std::scoped_lock lock(fMutex);
    if (fEntries.empty()) {
        return nullptr;
    }
    const auto entry = FindEntry(rate);
    return entry == fEntries.end() ? fEntries.back().get() : entry->get();
}

void CDSPTablesCache::Release(int32_t rate) noexcept {
    const std::scoped_lock lock(fMutex);
    const auto entry = FindEntry(rate);
    if (entry == fEntries.end() || --(*entry)->fRefCount > 0) {
        return;
    }
    fEntries.erase(entry);
    if (fEntries.empty()) {
        Entries().swap(fEntries);
    }
}

size_t CDSPTablesCache::GetEntryCount() {
    const std::scoped_lock lock(fMutex);
    return fEntries.size();
}

int32_t CDSPTablesCache::GetReferenceCount(int32_t rate) {
    const std::scoped_lock lock(fMutex);
    const auto entry = FindEntry(rate);
    return entry == fEntries.end() ? 0 : (*entry)->fRefCount;
}

} // namespace NSLOPDLL

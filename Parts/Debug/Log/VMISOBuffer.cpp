#include "Debug/Log/VMISOBuffer.h"

namespace NSDebugPackage {

VMISOBuffer::VMISOBuffer(uint32_t capacity)
    : fCapacity(capacity), fStates(std::make_unique<std::atomic<uint32_t>[]>(capacity)),
      fEntries(std::make_unique<VMISOBufferEntry[]>(capacity)) {
    for (uint32_t i = 0; i < capacity; ++i) {
        fStates[i].store(kEntryFree, std::memory_order_relaxed);
    }
}

bool VMISOBuffer::Offer(const VMISOBufferEntry& entry) noexcept {
    for (uint32_t i = 0; i < fCapacity; ++i) {
        uint32_t expected = kEntryFree;
        if (fStates[i].compare_exchange_strong(expected, kEntryWriting, std::memory_order_acquire,
                                               std::memory_order_relaxed)) {
            fEntries[i] = entry;
            // Counted before it can be taken, so that the count never falls below zero.
            fCount.fetch_add(1, std::memory_order_release);
            fStates[i].store(kEntryFilled, std::memory_order_release);
            return true;
        }
    }
    return false;
}

} // namespace NSDebugPackage

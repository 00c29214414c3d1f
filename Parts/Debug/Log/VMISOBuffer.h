#pragma once

#include "Support/Time/CalendarTime.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace NSDebugPackage {

constexpr size_t kQueuedTextLength = 2047;

/// One queued trace line.
struct VMISOBufferEntry {
    NSSupport::SCalendarTime fTime; // UTC
    uint32_t fThread = 0;
    int32_t fNumber = 0; // of the trace's site
    uint32_t fIndent = 0;
    char fText[kQueuedTextLength + 1] = {}; // UTF-8, possibly cut inside a character
};

/// A queue of fixed size with many writers and one reader at a time, none of which waits. Each slot
/// has a state; a writer claims the first free slot by compare-and-swap, so the entries of one
/// thread can leave out of order once slots are used again.
class VMISOBuffer {
public:
    enum EState : uint32_t { kEntryFree = 23, kEntryWriting = 24, kEntryFilled = 25 };

    explicit VMISOBuffer(uint32_t capacity);
    VMISOBuffer(const VMISOBuffer&) = delete;
    VMISOBuffer& operator=(const VMISOBuffer&) = delete;

    /// False when no slot is free. Real-time safe.
    bool Offer(const VMISOBufferEntry& entry) noexcept;

    /// Hands every filled entry to `take` and frees its slot afterwards. Only by one thread at a
    /// time, and not from within `take`.
    template <class Take>
    void Drain(Take&& take) {
        for (uint32_t i = 0; i < fCapacity && GetCount() != 0; ++i) {
            if (fStates[i].load(std::memory_order_acquire) == kEntryFilled) {
                take(static_cast<const VMISOBufferEntry&>(fEntries[i]));
                fCount.fetch_sub(1, std::memory_order_relaxed);
                fStates[i].store(kEntryFree, std::memory_order_release);
            }
        }
    }

    uint32_t GetCapacity() const { return fCapacity; }
    /// Entries that are filled or about to be.
    uint32_t GetCount() const { return fCount.load(std::memory_order_acquire); }

private:
    const uint32_t fCapacity;
    std::atomic<uint32_t> fCount{0};
    std::unique_ptr<std::atomic<uint32_t>[]> fStates;
    std::unique_ptr<VMISOBufferEntry[]> fEntries;
};

} // namespace NSDebugPackage

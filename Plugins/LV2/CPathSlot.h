#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

/// A path that one thread writes, without waiting, and any thread reads: a reader that meets a
/// writer tries again.
class CPathSlot {
public:
    static constexpr uint32_t kLongest = 4095; // bytes

    /// Longer paths are cut; the caller checks. One writer at a time.
    void Store(const char* path, uint32_t length) noexcept {
        fTurn.fetch_add(1, std::memory_order_relaxed); // odd: being written
        // No byte becomes visible before the odd number does.
        std::atomic_thread_fence(std::memory_order_release);
        for (uint32_t i = 0; i < length && i < kLongest; ++i) {
            fBytes[i].store(path[i], std::memory_order_relaxed);
        }
        fBytes[length < kLongest ? length : kLongest].store(0, std::memory_order_relaxed);
        fTurn.fetch_add(1, std::memory_order_release);
    }
    std::string Load() const {
        for (;;) {
            const uint32_t before = fTurn.load(std::memory_order_acquire);
            std::string path;
            for (const std::atomic<char>& byte : fBytes) {
                const char read = byte.load(std::memory_order_relaxed);
                if (read == 0) {
                    break;
                }
                path += read;
            }
            std::atomic_thread_fence(std::memory_order_acquire);
            if (before % 2 == 0 && fTurn.load(std::memory_order_relaxed) == before) {
                return path;
            }
        }
    }

private:
    std::atomic<uint32_t> fTurn{0};
    std::array<std::atomic<char>, kLongest + 1> fBytes{};
};

#pragma once

#include "CLoadedLoop.h"

#include <memory>
#include <mutex>
#include <vector>

/// Owns every loop that an instance has loaded, so that those that a host still carries between
/// worker and audio call when it ends the instance are freed too. Waits for a lock: not for the
/// audio call.
class CLoopStore {
public:
    /// May throw std::bad_alloc.
    CLoadedLoop* Keep(std::unique_ptr<CLoadedLoop> loop) {
        const std::lock_guard<std::mutex> lock(fMutex);
        fLoops.push_back(std::move(loop));
        return fLoops.back().get();
    }
    void Free(const CLoadedLoop* loop) noexcept {
        const std::lock_guard<std::mutex> lock(fMutex);
        for (auto& kept : fLoops) {
            if (kept.get() == loop) {
                kept.swap(fLoops.back());
                fLoops.pop_back();
                return;
            }
        }
    }

private:
    std::mutex fMutex;
    std::vector<std::unique_ptr<CLoadedLoop>> fLoops;
};

// The contests, and what they share.
#pragma once

#include "Benchmarks/Contest/CContest.h"
#include "Benchmarks/Contest/CLibrary.h"

#include "Benchmarks/Voices/EightVoices.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <vector>

namespace LoopBench {

struct SSession {
    bool fQuick = false;
    /// This build's library first, then those that it is compared with.
    std::vector<std::unique_ptr<CLibrary>> fLibraries;
    /// Of an earlier build; null without one.
    decltype(&LoopBenchRunEightVoices) fEarlierVoices = nullptr;
    nlohmann::json fReport = nlohmann::json::array();

    /// Runs, prints and keeps a contest.
    void Hold(CContest& contest);
    /// The libraries with this build's last, so that another build is what it is compared with.
    std::vector<const CLibrary*> FromOldest() const;
};

void HoldDecodeContests(SSession& session);
void HoldRenderContests(SSession& session);
void HoldLoadContests(SSession& session);
void HoldGrowthContests(SSession& session);
void HoldStartContests(SSession& session);

} // namespace LoopBench

#include "Benchmarks/Contest/CContest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace LoopBench {

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double SResult::Least() const {
    return *std::min_element(fTimes.begin(), fTimes.end());
}

double SResult::Median() const {
    std::vector<double> sorted = fTimes;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

CContest::CContest(std::string name, std::string unit, double unitsPerRun)
    : fName(std::move(name)), fUnit(std::move(unit)), fUnitsPerRun(unitsPerRun) {}

void CContest::Add(const std::string& contestant, std::function<void()> run) {
    AddTimed(contestant, [run = std::move(run)] {
        const double start = ThreadSeconds();
        run();
        return ThreadSeconds() - start;
    });
}

void CContest::AddTimed(const std::string& contestant, std::function<double()> run) {
    fContestants.push_back({std::move(run)});
    fResults.push_back({contestant, {}});
}

void CContest::Run(int rounds, double turnSeconds) {
    for (SContestant& one : fContestants) {
        // Warms up too. What counts as the run's time may be less than all that it takes.
        const double start = ThreadSeconds();
        one.fRun();
        const double seconds = std::max(ThreadSeconds() - start, 1e-7);
        one.fRunsPerTurn = static_cast<int>(std::clamp(std::ceil(turnSeconds / seconds), 1.0, 1e6));
    }
    for (int round = 0; round < rounds; ++round) {
        for (size_t i = 0; i < fContestants.size(); ++i) {
            double seconds = 0;
            for (int run = 0; run < fContestants[i].fRunsPerTurn; ++run) {
                seconds += fContestants[i].fRun();
            }
            fResults[i].fTimes.push_back(seconds * 1e9 / fContestants[i].fRunsPerTurn /
                                         fUnitsPerRun);
        }
    }
}

void CContest::Print() const {
    std::printf("%s, ns a %s\n", fName.c_str(), fUnit.c_str());
    for (const SResult& result : fResults) {
        std::printf("  %-34s least %10.2f  median %10.2f  x %6.3f  x %6.3f\n", result.fName.c_str(),
                    result.Least(), result.Median(), fResults[0].Least() / result.Least(),
                    fResults[0].Median() / result.Median());
    }
    std::fflush(stdout);
}

nlohmann::json CContest::ToJson() const {
    nlohmann::json rows = nlohmann::json::array();
    for (const SResult& result : fResults) {
        rows.push_back({{"name", result.fName},
                        {"least_ns", result.Least()},
                        {"median_ns", result.Median()},
                        {"speed_by_least", fResults[0].Least() / result.Least()},
                        {"speed_by_median", fResults[0].Median() / result.Median()}});
    }
    return {{"contest", fName}, {"unit", fUnit}, {"reference", fResults[0].fName}, {"rows", rows}};
}

} // namespace LoopBench

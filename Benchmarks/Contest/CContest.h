// Measurements that compare within one run.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <string>
#include <vector>

namespace LoopBench {

/// Seconds of CPU that this thread has used, which other programs on the machine hardly change.
double ThreadSeconds();

struct SResult {
    std::string fName;
    /// Nanoseconds for one unit, one value a round.
    std::vector<double> fTimes;

    double Least() const;
    double Median() const;
};

/// One row of work done by several contestants. They take turns, a turn each in every round, so
/// that whatever the machine does in the meantime meets all of them.
class CContest {
public:
    /// `unit` names what `unitsPerRun` counts in one run of a contestant. The first contestant
    /// added is the one that the others are compared with.
    CContest(std::string name, std::string unit, double unitsPerRun);

    void Add(const std::string& contestant, std::function<void()> run);
    /// For work that cannot be timed as a whole: `run` answers the seconds that count.
    void AddTimed(const std::string& contestant, std::function<double()> run);

    /// `rounds` turns each, of at least `turnSeconds`.
    void Run(int rounds, double turnSeconds);

    /// Prints the row as lines: least and median time a unit, and how many times as fast as the
    /// first contestant, by the least times and by the medians.
    void Print() const;
    nlohmann::json ToJson() const;

private:
    struct SContestant {
        std::function<double()> fRun;
        int fRunsPerTurn = 0;
    };

    std::string fName;
    std::string fUnit;
    double fUnitsPerRun;
    std::vector<SContestant> fContestants;
    std::vector<SResult> fResults;
};

} // namespace LoopBench

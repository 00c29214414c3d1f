#pragma once

#include <limits>
#include <optional>
#include <string>

namespace NSLoopTool {

/// Numbers from one to another, both of them in it.
struct SNumberRange {
    double fLeast = -std::numeric_limits<double>::infinity();
    double fGreatest = std::numeric_limits<double>::infinity();

    bool Has(double value) const { return value >= fLeast && value <= fGreatest; }
};

/// "90..100", "90..", "..100", or "90" for that number alone.
std::optional<SNumberRange> ParseRange(const std::string& text);

} // namespace NSLoopTool

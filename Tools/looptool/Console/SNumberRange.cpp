#include "looptool/Console/SNumberRange.h"

#include "looptool/Console/Numbers.h"

namespace NSLoopTool {

std::optional<SNumberRange> ParseRange(const std::string& text) {
    const size_t dots = text.find("..");
    const std::string least = text.substr(0, dots);
    const std::string greatest = dots == std::string::npos ? least : text.substr(dots + 2);
    SNumberRange range;
    if ((least.empty() && greatest.empty()) || (dots == std::string::npos && least.empty())) {
        return std::nullopt;
    }
    if (!least.empty()) {
        const std::optional<double> value = ParseDecimal(least);
        if (!value) {
            return std::nullopt;
        }
        range.fLeast = *value;
    }
    if (!greatest.empty()) {
        const std::optional<double> value = ParseDecimal(greatest);
        if (!value) {
            return std::nullopt;
        }
        range.fGreatest = *value;
    }
    return range.fLeast <= range.fGreatest ? std::optional(range) : std::nullopt;
}

} // namespace NSLoopTool

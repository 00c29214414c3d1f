#include "looptool/Console/Numbers.h"

#include <charconv>
#include <cmath>

namespace NSLoopTool {

namespace {

template <class Number>
std::optional<Number> Parse(std::string_view text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<int64_t> ParseInteger(std::string_view text) {
    return Parse<int64_t>(text);
}

std::optional<double> ParseDecimal(std::string_view text) {
    const std::optional<double> value = Parse<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::string DecimalText(double value) {
    const double rounded = std::round(value * 1000.0) / 1000.0;
    char text[64];
    const auto [stop, error] =
        std::to_chars(text, text + sizeof text, rounded, std::chars_format::fixed);
    return error == std::errc() ? std::string(text, stop) : "0";
}

std::string CountText(int64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace NSLoopTool

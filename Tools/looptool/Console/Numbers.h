#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace NSLoopTool {

/// A whole text as a number: decimal digits, with a sign before them if negative. Nothing for
/// anything else: no other bases, blanks or signs, nothing beyond 64 bits.
std::optional<int64_t> ParseInteger(std::string_view text);

/// Likewise, with a decimal point if there is one; never infinite and never not-a-number. The point
/// is a point in every locale.
std::optional<double> ParseDecimal(std::string_view text);

/// As few digits as tell the number from its neighbours to a thousandth: 120, 97.5, 174.221.
std::string DecimalText(double value);

/// "1 bar", "2 bars".
std::string CountText(int64_t count, const std::string& noun);

} // namespace NSLoopTool

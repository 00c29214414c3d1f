#pragma once

#include <string>

namespace NSLOPDLL {

/// Raise a failure about a loop file, which carries the target word of loop files.
[[noreturn]] void RaiseFormatViolation(const std::string& text);
[[noreturn]] void RaiseUnsupportedFormat(const std::string& text);
[[noreturn]] void RaiseVersionTooNew(const std::string& text);

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <exception>

namespace NSLOPDLL {

/// The one table that turns a failure into a public result, by run-time type; the first row that
/// fits decides.
LOPResult ResultOfException(const std::exception& exception) noexcept;

/// Only inside a catch: the result of what was caught, kLOPResult_Undefined for anything that is
/// not a std::exception.
LOPResult ResultOfCurrentException() noexcept;

/// For the exports whose failures all look alike: kLOPResult_Undefined, whatever was caught.
LOPResult UndefinedResult() noexcept;

} // namespace NSLOPDLL

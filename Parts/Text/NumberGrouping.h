// Digit grouping of numbers in wide streams.
#pragma once

#include <cstdint>
#include <ios>
#include <string>

namespace NSTextPackage {

constexpr int32_t kNumberGrouping_WhenDifferent = 7481;
constexpr int32_t kNumberGrouping_Always = 7482;

/// Gives the stream the number format of the named locale ("de_DE.UTF-8", on Windows "de-DE") with
/// `grouping` in place of the locale's own (the form of std::numpunct::grouping).
/// kNumberGrouping_WhenDifferent leaves a stream alone that has this format already; other modes do
/// nothing. Raises std::runtime_error for a locale name that the system does not know.
void SetNumberGrouping(int32_t mode, std::wios& stream, const std::string& localeName,
                       const std::string& grouping);

} // namespace NSTextPackage

// Date-times as text, in UTC: "2023-03-04T05:06:07Z".
#pragma once

#include "Support/Time/CalendarTime.h"

#include <string>

namespace NSSupport {

/// Fractions of a second are dropped. Raises XFormatViolation with "FileTimeToSystemTime failed"
/// for a time that has no calendar form.
std::string FormatDateTime(FileTime time);

/// Leading zeros may be missing: the year has 1 to 4 digits, every other field 1 or 2. Raises
/// XFormatViolation with "Bad year string" and so on for the field at fault, and with
/// "SystemTimeToFileTime failed" for fields that make no date.
FileTime ParseDateTime(const std::string& text);

} // namespace NSSupport

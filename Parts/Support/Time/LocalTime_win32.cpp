#include "Support/Time/CalendarTime.h"

#include <windows.h>

#include <bit>

namespace NSSupport {

SCalendarTime UtcToLocal(const SCalendarTime& utc) {
    // The record is the system's own, field by field.
    const auto system = std::bit_cast<SYSTEMTIME>(utc);
    SYSTEMTIME local;
    return SystemTimeToTzSpecificLocalTime(nullptr, &system, &local)
               ? std::bit_cast<SCalendarTime>(local)
               : utc;
}

} // namespace NSSupport

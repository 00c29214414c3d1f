// Points in time as counts and as calendar records.
#pragma once

#include <cstdint>

namespace NSSupport {

/// 100 ns units since the beginning of 1601, UTC.
using FileTime = uint64_t;

struct SCalendarTime {
    uint16_t fYear = 0;
    uint16_t fMonth = 0;     // 1 to 12
    uint16_t fDayOfWeek = 0; // 0 is Sunday
    uint16_t fDay = 0;       // 1 to 31
    uint16_t fHour = 0;
    uint16_t fMinute = 0;
    uint16_t fSecond = 0;
    uint16_t fMillisecond = 0;
};
static_assert(sizeof(SCalendarTime) == 16);

/// False from 2^63 on, which lies in the year 30828.
bool FileTimeToCalendar(FileTime time, SCalendarTime& calendar) noexcept;
/// False for a record that is not a date of the years 1601 to 30827; fDayOfWeek is not looked at.
bool CalendarToFileTime(const SCalendarTime& calendar, FileTime& time) noexcept;

/// Real-time safe: neither waits nor allocates.
SCalendarTime GetUtcTime() noexcept;

/// In the time zone of the user; UTC where the system cannot tell.
SCalendarTime UtcToLocal(const SCalendarTime& utc);

} // namespace NSSupport

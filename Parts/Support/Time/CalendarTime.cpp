// The calendar is computed here: what the systems offer may lock and allocate, and the time of a
// trace line is read on threads that must do neither.
#include "Support/Time/CalendarTime.h"

#include <chrono>
#include <ratio>

namespace NSSupport {

namespace {

using namespace std::chrono;
using FileTimeUnits = duration<int64_t, std::ratio<1, 10000000>>;

constexpr year kFirstYear{1601};
constexpr year kLastYear{30827};
constexpr sys_days kFirstDay = kFirstYear / January / 1;
constexpr FileTime kFirstUnknownTime = 0x8000000000000000;

} // namespace

bool FileTimeToCalendar(FileTime time, SCalendarTime& calendar) noexcept {
    if (time >= kFirstUnknownTime) {
        return false;
    }
    const FileTimeUnits sinceFirstDay(static_cast<int64_t>(time));
    const auto wholeDays = floor<days>(sinceFirstDay);
    const sys_days day = kFirstDay + wholeDays;
    const year_month_day date(day);
    const hh_mm_ss clock(floor<milliseconds>(sinceFirstDay - wholeDays));
    calendar.fYear = static_cast<uint16_t>(static_cast<int>(date.year()));
    calendar.fMonth = static_cast<uint16_t>(static_cast<unsigned>(date.month()));
    calendar.fDayOfWeek = static_cast<uint16_t>(weekday(day).c_encoding());
    calendar.fDay = static_cast<uint16_t>(static_cast<unsigned>(date.day()));
    calendar.fHour = static_cast<uint16_t>(clock.hours().count());
    calendar.fMinute = static_cast<uint16_t>(clock.minutes().count());
    calendar.fSecond = static_cast<uint16_t>(clock.seconds().count());
    calendar.fMillisecond = static_cast<uint16_t>(clock.subseconds().count());
    return true;
}

bool CalendarToFileTime(const SCalendarTime& calendar, FileTime& time) noexcept {
    const year_month_day date = year(calendar.fYear) / month(calendar.fMonth) / day(calendar.fDay);
    // A month and a day keep only the low byte of what they are given.
    if (calendar.fMonth > 12 || calendar.fDay > 31 || !date.ok() || date.year() < kFirstYear ||
        date.year() > kLastYear || calendar.fHour > 23 || calendar.fMinute > 59 ||
        calendar.fSecond > 59 || calendar.fMillisecond > 999) {
        return false;
    }
    const FileTimeUnits sinceFirstDay = (sys_days(date) - kFirstDay) + hours(calendar.fHour) +
                                        minutes(calendar.fMinute) + seconds(calendar.fSecond) +
                                        milliseconds(calendar.fMillisecond);
    time = static_cast<FileTime>(sinceFirstDay.count());
    return true;
}

SCalendarTime GetUtcTime() noexcept {
    SCalendarTime calendar;
    // The clock's own units do not reach back to 1601.
    const FileTimeUnits sinceFirstDay =
        floor<FileTimeUnits>(system_clock::now().time_since_epoch()) - kFirstDay.time_since_epoch();
    FileTimeToCalendar(static_cast<FileTime>(sinceFirstDay.count()), calendar);
    return calendar;
}

} // namespace NSSupport

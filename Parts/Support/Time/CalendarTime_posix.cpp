// The calendar is computed here: gmtime_r takes a lock and may allocate, and the time of a trace
// line is read on threads that must do neither.
#include "Support/Time/CalendarTime.h"

#include <ctime>

namespace NSSupport {

namespace {

constexpr uint64_t kUnitsPerMillisecond = 10000;
constexpr uint64_t kUnitsPerSecond = 10000000;
constexpr uint64_t kSecondsPerDay = 86400;
constexpr uint64_t kSecondsFrom1601To1970 = 11644473600;
constexpr uint64_t kFirstUnknownTime = 0x8000000000000000;
constexpr uint16_t kFirstYear = 1601;
constexpr uint16_t kLastYear = 30827;

constexpr uint32_t kDaysPerYear = 365;
constexpr uint32_t kDaysPer4Years = 4 * kDaysPerYear + 1;
constexpr uint32_t kDaysPer100Years = 25 * kDaysPer4Years - 1;
constexpr uint32_t kDaysPer400Years = 4 * kDaysPer100Years + 1;

bool IsLeapYear(uint32_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

uint32_t DaysInMonth(uint32_t year, uint32_t month) {
    constexpr uint8_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// Since the beginning of 1601, which is the first year of a cycle of 400.
uint32_t DaysBeforeYear(uint32_t year) {
    const uint32_t years = year - kFirstYear;
    return years * kDaysPerYear + years / 4 - years / 100 + years / 400;
}

} // namespace

bool FileTimeToCalendar(FileTime time, SCalendarTime& calendar) noexcept {
    if (time >= kFirstUnknownTime) {
        return false;
    }
    const uint64_t seconds = time / kUnitsPerSecond;
    const auto days = static_cast<uint32_t>(seconds / kSecondsPerDay);
    const auto secondOfDay = static_cast<uint32_t>(seconds % kSecondsPerDay);

    // Never too late and at most a year too early: since 1601 leap days have been no more than one
    // ahead of their share.
    uint32_t year = kFirstYear + static_cast<uint32_t>(uint64_t{days} * 400 / kDaysPer400Years);
    while (DaysBeforeYear(year + 1) <= days) {
        ++year;
    }
    uint32_t day = days - DaysBeforeYear(year);
    uint32_t month = 1;
    while (day >= DaysInMonth(year, month)) {
        day -= DaysInMonth(year, month);
        ++month;
    }
    calendar.fYear = static_cast<uint16_t>(year);
    calendar.fMonth = static_cast<uint16_t>(month);
    calendar.fDayOfWeek = static_cast<uint16_t>((days + 1) % 7); // 1601 began on a Monday
    calendar.fDay = static_cast<uint16_t>(day + 1);
    calendar.fHour = static_cast<uint16_t>(secondOfDay / 3600);
    calendar.fMinute = static_cast<uint16_t>(secondOfDay / 60 % 60);
    calendar.fSecond = static_cast<uint16_t>(secondOfDay % 60);
    calendar.fMillisecond = static_cast<uint16_t>(time % kUnitsPerSecond / kUnitsPerMillisecond);
    return true;
}

bool CalendarToFileTime(const SCalendarTime& calendar, FileTime& time) noexcept {
    if (calendar.fYear < kFirstYear || calendar.fYear > kLastYear || calendar.fMonth < 1 ||
        calendar.fMonth > 12 || calendar.fDay < 1 ||
        calendar.fDay > DaysInMonth(calendar.fYear, calendar.fMonth) || calendar.fHour > 23 ||
        calendar.fMinute > 59 || calendar.fSecond > 59 || calendar.fMillisecond > 999) {
        return false;
    }
    uint64_t days = DaysBeforeYear(calendar.fYear) + calendar.fDay - 1U;
    for (uint32_t month = 1; month < calendar.fMonth; ++month) {
        days += DaysInMonth(calendar.fYear, month);
    }
    const uint64_t seconds = days * kSecondsPerDay + uint64_t{calendar.fHour} * 3600 +
                             uint64_t{calendar.fMinute} * 60 + calendar.fSecond;
    time = seconds * kUnitsPerSecond + calendar.fMillisecond * kUnitsPerMillisecond;
    return true;
}

SCalendarTime GetUtcTime() noexcept {
    SCalendarTime calendar;
    timespec now{};
    if (clock_gettime(CLOCK_REALTIME, &now) == 0) {
        const uint64_t seconds = static_cast<uint64_t>(now.tv_sec) + kSecondsFrom1601To1970;
        FileTimeToCalendar(seconds * kUnitsPerSecond + static_cast<uint64_t>(now.tv_nsec) / 100,
                           calendar);
    }
    return calendar;
}

SCalendarTime UtcToLocal(const SCalendarTime& utc) {
    FileTime time = 0;
    std::tm local{};
    if (!CalendarToFileTime(utc, time)) {
        return utc;
    }
    const auto seconds = static_cast<std::time_t>(time / kUnitsPerSecond - kSecondsFrom1601To1970);
    if (localtime_r(&seconds, &local) == nullptr) {
        return utc;
    }
    SCalendarTime result = utc;
    result.fYear = static_cast<uint16_t>(local.tm_year + 1900);
    result.fMonth = static_cast<uint16_t>(local.tm_mon + 1);
    result.fDayOfWeek = static_cast<uint16_t>(local.tm_wday);
    result.fDay = static_cast<uint16_t>(local.tm_mday);
    result.fHour = static_cast<uint16_t>(local.tm_hour);
    result.fMinute = static_cast<uint16_t>(local.tm_min);
    result.fSecond = static_cast<uint16_t>(local.tm_sec);
    return result;
}

} // namespace NSSupport

#include "Support/Time/CalendarTime.h"

#include <windows.h>

#include <bit>

namespace NSSupport {

namespace {

// The record is the system's own, field by field.
static_assert(sizeof(SYSTEMTIME) == sizeof(SCalendarTime));

SYSTEMTIME ToSystem(const SCalendarTime& calendar) {
    return std::bit_cast<SYSTEMTIME>(calendar);
}

SCalendarTime FromSystem(const SYSTEMTIME& system) {
    return std::bit_cast<SCalendarTime>(system);
}

} // namespace

bool FileTimeToCalendar(FileTime time, SCalendarTime& calendar) noexcept {
    FILETIME fileTime;
    fileTime.dwLowDateTime = static_cast<DWORD>(time);
    fileTime.dwHighDateTime = static_cast<DWORD>(time >> 32);
    SYSTEMTIME system;
    // Not every version of the system refuses what the range leaves out.
    if (time >= 0x8000000000000000 || !FileTimeToSystemTime(&fileTime, &system)) {
        return false;
    }
    calendar = FromSystem(system);
    return true;
}

bool CalendarToFileTime(const SCalendarTime& calendar, FileTime& time) noexcept {
    const SYSTEMTIME system = ToSystem(calendar);
    FILETIME fileTime;
    SYSTEMTIME back;
    // Some versions of the system count on from the end of a month that is too short.
    if (!SystemTimeToFileTime(&system, &fileTime) || !FileTimeToSystemTime(&fileTime, &back) ||
        back.wDay != system.wDay) {
        return false;
    }
    time = (static_cast<FileTime>(fileTime.dwHighDateTime) << 32) | fileTime.dwLowDateTime;
    return true;
}

SCalendarTime GetUtcTime() noexcept {
    SYSTEMTIME system;
    GetSystemTime(&system);
    return FromSystem(system);
}

SCalendarTime UtcToLocal(const SCalendarTime& utc) {
    const SYSTEMTIME system = ToSystem(utc);
    SYSTEMTIME local;
    return SystemTimeToTzSpecificLocalTime(nullptr, &system, &local) ? FromSystem(local) : utc;
}

} // namespace NSSupport

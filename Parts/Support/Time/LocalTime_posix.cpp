#include "Support/Time/CalendarTime.h"

#include <ctime>

namespace NSSupport {

SCalendarTime UtcToLocal(const SCalendarTime& utc) {
    constexpr FileTime kUnitsPerSecond = 10000000;
    constexpr int64_t kSecondsFrom1601To1970 = 11644473600;
    FileTime time = 0;
    std::tm local{};
    if (!CalendarToFileTime(utc, time)) {
        return utc;
    }
    const auto seconds = static_cast<std::time_t>(static_cast<int64_t>(time / kUnitsPerSecond) -
                                                  kSecondsFrom1601To1970);
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

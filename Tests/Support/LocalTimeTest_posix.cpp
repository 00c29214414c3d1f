#include "Support/Time/CalendarTime.h"

#include "Tests/CTimeZone_posix.h"

#include <gtest/gtest.h>

#include <cstring>

namespace NSSupport {

TEST(LocalTime, CrossesDaysWithTheZone) {
    const CTimeZone zone("XXX-5:45");
    const std::pair<SCalendarTime, SCalendarTime> rows[] = {
        {{2023, 12, 0, 31, 20, 20, 7, 89}, {2024, 1, 1, 1, 2, 5, 7, 89}},
        {{1601, 1, 1, 1, 0, 0, 0, 1}, {1601, 1, 1, 1, 5, 45, 0, 1}},
        {{2023, 2, 1, 29, 1, 2, 3, 4}, {2023, 2, 1, 29, 1, 2, 3, 4}}}; // no date
    for (const auto& [utc, local] : rows) {
        const SCalendarTime converted = UtcToLocal(utc);
        EXPECT_EQ(std::memcmp(&converted, &local, sizeof local), 0) << utc.fYear;
    }
}

} // namespace NSSupport

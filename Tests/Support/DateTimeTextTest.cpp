#include "Support/Time/DateTimeText.h"

#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>

namespace NSSupport {

constexpr FileTime kUnitsPerSecond = 10000000;
constexpr FileTime kUnixEpoch = 116444736000000000;

TEST(DateTimeText, BothWays) {
    // 1970 by definition of the two epochs, the others by the system's date command.
    EXPECT_EQ(FormatDateTime(kUnixEpoch), "1970-01-01T00:00:00Z");
    EXPECT_EQ(FormatDateTime(kUnixEpoch + 951827696 * kUnitsPerSecond + 9999999),
              "2000-02-29T12:34:56Z");
    EXPECT_EQ(ParseDateTime("2023-3-4T5:06:07Z"), kUnixEpoch + 1677906367 * kUnitsPerSecond);
    EXPECT_EQ(ParseDateTime("1601-01-01T00:00:00Z"), 0U);
    EXPECT_EQ(FormatDateTime(0), "1601-01-01T00:00:00Z");
}

static std::string RefusalOf(const char* text) {
    try {
        ParseDateTime(text);
    } catch (const NSLichen::XFormatViolation& failure) {
        return failure.what();
    }
    return "accepted";
}

TEST(DateTimeText, EachFieldHasItsMessage) {
    const struct {
        const char* fText;
        const char* fRefusal;
    } cases[] = {
        {"20233-03-04T05:06:07Z", "Bad year string"},
        {"2O23-03-04T05:06:07Z", "Bad year string"},
        {"-2023-03-04T05:06:07Z", "Bad year string"},
        {"2023-003-04T05:06:07Z", "Bad month string"},
        {"2023-03-04 05:06:07Z", "Bad day string"},
        {"2023-03-04T:06:07Z", "Bad hour string"},
        {"2023-03-04T05:+6:07Z", "Bad minute string"},
        {"2023-03-04T05:06:07", "Bad second string"},
        {"2023-03-04T05:06:07Z ", "Bad second string"},
        {"2023-02-29T05:06:07Z", "SystemTimeToFileTime failed"},
        {"1600-12-31T23:59:59Z", "SystemTimeToFileTime failed"},
        {"2023-13-04T05:06:07Z", "SystemTimeToFileTime failed"},
        {"2023-03-04T24:06:07Z", "SystemTimeToFileTime failed"},
        {"2023-03-04T05:06:60Z", "SystemTimeToFileTime failed"},
    };
    for (const auto& [text, refusal] : cases) {
        EXPECT_EQ(RefusalOf(text), refusal) << text;
    }
    EXPECT_THROW(FormatDateTime(0x8000000000000000), NSLichen::XFormatViolation);
}

// Counts through all days that have a date, and asks about both ends of each month.
TEST(CalendarTime, EveryMonthFrom1601To30827) {
    constexpr FileTime kUnitsPerDay = 86400 * kUnitsPerSecond;
    FileTime day = 0;
    SCalendarTime date = {1601, 1, 1, 1, 23, 59, 59, 123}; // a Monday
    const auto check = [&] {
        const FileTime time = (day + 1) * kUnitsPerDay - kUnitsPerSecond + 1230000;
        date.fDayOfWeek = static_cast<uint16_t>((day + 1) % 7);
        SCalendarTime calendar;
        EXPECT_TRUE(FileTimeToCalendar(time, calendar));
        EXPECT_EQ(std::memcmp(&calendar, &date, sizeof date), 0)
            << date.fYear << '-' << date.fMonth;
        FileTime back = 0;
        EXPECT_TRUE(CalendarToFileTime(date, back));
        EXPECT_EQ(back, time);
    };
    for (; date.fYear <= 30827; ++date.fYear) {
        const bool isLeap = date.fYear % 4 == 0 && (date.fYear % 100 != 0 || date.fYear % 400 == 0);
        const uint16_t lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        for (date.fMonth = 1; date.fMonth <= 12; ++date.fMonth) {
            const bool isLeapMonth = isLeap && date.fMonth == 2;
            date.fDay = 1;
            check();
            date.fDay = isLeapMonth ? 29 : lengths[date.fMonth - 1];
            day += date.fDay - 1U;
            check();
            ++day;
        }
    }
    EXPECT_FALSE(CalendarToFileTime({30828, 1, 1, 1}, day));
    EXPECT_FALSE(CalendarToFileTime({2023, 257, 1, 1}, day)); // 1 in eight bits
}

TEST(CalendarTime, Now) {
    FileTime now = 0;
    ASSERT_TRUE(CalendarToFileTime(GetUtcTime(), now));
    const auto expected = kUnixEpoch + static_cast<FileTime>(std::time(nullptr)) * kUnitsPerSecond;
    EXPECT_LT(now > expected ? now - expected : expected - now, 5 * kUnitsPerSecond);
}

} // namespace NSSupport

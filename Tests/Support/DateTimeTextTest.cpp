#include "Support/Time/DateTimeText.h"

#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

#include <ctime>

namespace NSSupport {
namespace {

constexpr FileTime kUnitsPerSecond = 10000000;
constexpr FileTime kUnitsPerQuarter = 9000000000;
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

std::string RefusalOf(const char* text) {
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

// Against the C library's calendar, from the days around each new year and leap day to the last
// year that both know.
TEST(CalendarTime, AgreesWithTheCLibrary) {
    const auto check = [](int64_t unixSeconds) {
        const std::time_t seconds = unixSeconds;
        const std::tm* const known = std::gmtime(&seconds);
        SCalendarTime calendar;
        const FileTime time = kUnixEpoch + static_cast<FileTime>(unixSeconds) * kUnitsPerSecond;
        if (known == nullptr || !FileTimeToCalendar(time + 1230000, calendar)) {
            ADD_FAILURE() << unixSeconds;
            return;
        }
        EXPECT_EQ(calendar.fYear, known->tm_year + 1900);
        EXPECT_EQ(calendar.fMonth, known->tm_mon + 1);
        EXPECT_EQ(calendar.fDay, known->tm_mday);
        EXPECT_EQ(calendar.fDayOfWeek, known->tm_wday);
        EXPECT_EQ(calendar.fHour * 3600 + calendar.fMinute * 60 + calendar.fSecond,
                  known->tm_hour * 3600 + known->tm_min * 60 + known->tm_sec);
        EXPECT_EQ(calendar.fMillisecond, 123);
        FileTime back = 0;
        EXPECT_TRUE(CalendarToFileTime(calendar, back));
        EXPECT_EQ(back, time + 1230000);
    };
    constexpr int64_t kDay = 86400;
    for (int64_t day = 0; day < 375950; day += day % 1461 < 62 ? 1 : 97) {
        check(day * kDay + day % kDay);
    }
}

TEST(CalendarTime, NowAndHere) {
    const SCalendarTime utc = GetUtcTime();
    FileTime now = 0;
    ASSERT_TRUE(CalendarToFileTime(utc, now));
    const auto expected = kUnixEpoch + static_cast<FileTime>(std::time(nullptr)) * kUnitsPerSecond;
    EXPECT_LT(now > expected ? now - expected : expected - now, 5 * kUnitsPerSecond);

    FileTime local = 0;
    ASSERT_TRUE(CalendarToFileTime(UtcToLocal(utc), local));
    const FileTime distance = local > now ? local - now : now - local;
    EXPECT_LE(distance, 60 * kUnitsPerQuarter);
    EXPECT_EQ(distance % kUnitsPerQuarter, 0U);
}

} // namespace
} // namespace NSSupport

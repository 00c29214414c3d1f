#include "Support/Time/DateTimeText.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace NSSupport {

namespace {

struct SField {
    uint16_t SCalendarTime::*fMember;
    size_t fMostDigits;
    char fSeparator;
    const char* fRefusal;
};

constexpr std::array<SField, 6> kFields = {{
    {&SCalendarTime::fYear, 4, '-', "Bad year string"},
    {&SCalendarTime::fMonth, 2, '-', "Bad month string"},
    {&SCalendarTime::fDay, 2, 'T', "Bad day string"},
    {&SCalendarTime::fHour, 2, ':', "Bad hour string"},
    {&SCalendarTime::fMinute, 2, ':', "Bad minute string"},
    {&SCalendarTime::fSecond, 2, 'Z', "Bad second string"},
}};

[[noreturn]] void Refuse(const char* text) {
    NSLichen::Raise(NSLichen::XFormatViolation(text));
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

} // namespace

std::string FormatDateTime(FileTime time) {
    SCalendarTime calendar;
    if (!FileTimeToCalendar(time, calendar)) {
        Refuse("FileTimeToSystemTime failed");
    }
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%d-%02d-%02dT%02d:%02d:%02dZ", calendar.fYear,
                  calendar.fMonth, calendar.fDay, calendar.fHour, calendar.fMinute,
                  calendar.fSecond);
    return buffer.data();
}

FileTime ParseDateTime(const std::string& text) {
    SCalendarTime calendar;
    std::string_view rest = text;
    for (const SField& field : kFields) {
        const size_t length = rest.find(field.fSeparator);
        if (length == std::string_view::npos || length < 1 || length > field.fMostDigits ||
            !std::all_of(rest.begin(), rest.begin() + length, IsDigit)) {
            Refuse(field.fRefusal);
        }
        uint16_t value = 0;
        for (const char digit : rest.substr(0, length)) {
            value = static_cast<uint16_t>(value * 10 + (digit - '0'));
        }
        calendar.*field.fMember = value;
        rest.remove_prefix(length + 1);
    }
    if (!rest.empty()) {
        Refuse(kFields.back().fRefusal);
    }
    FileTime time = 0;
    if (!CalendarToFileTime(calendar, time)) {
        Refuse("SystemTimeToFileTime failed");
    }
    return time;
}

} // namespace NSSupport

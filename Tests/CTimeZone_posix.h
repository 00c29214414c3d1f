#pragma once

#include <cstdlib>
#include <ctime>

// Sets the time zone of the process ("XXX-5:45" lies east of UTC) and gives the usual one back.
class CTimeZone {
public:
    explicit CTimeZone(const char* zone) { Set(zone); }
    ~CTimeZone() { Set(nullptr); }
    CTimeZone(const CTimeZone&) = delete;
    CTimeZone& operator=(const CTimeZone&) = delete;

private:
    static void Set(const char* zone) {
        zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

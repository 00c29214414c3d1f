#include "Failure/Classes/XClasses.h"
#include "Support/Loader/IDLLLoader.h"
#include "Support/Time/CalendarTime.h"
#include "Tests/CTimeZone_posix.h"

#include <gtest/gtest.h>

#include <cstring>
#include <dlfcn.h>
#include <string>

namespace NSSupport {

TEST(DLLLoader, LoadsByNameAndByPath) {
    const auto loader = MakeDLLLoader();
    const auto byName = loader->Open(u"libm.so.6");
    const auto cosine = reinterpret_cast<double (*)(double)>(byName->GetAddress("cos"));
    EXPECT_EQ(cosine(0.0), 1.0);
    EXPECT_EQ(byName->FindAddress("no_such_name"), nullptr);

    Dl_info place{};
    ASSERT_NE(dladdr(reinterpret_cast<void*>(cosine), &place), 0);
    std::u16string path = u"C:";
    for (const char* c = place.dli_fname; *c != '\0'; ++c) {
        path.push_back(*c == '/' ? u'\\' : static_cast<char16_t>(*c));
    }
    const auto byPath = loader->Open(path);
    EXPECT_EQ(byPath->FindAddress("cos"), byName->FindAddress("cos"));

    try {
        loader->Open(u"no_such_module");
    } catch (const NSLichen::XNotFound& failure) {
        EXPECT_TRUE(std::string(failure.what()).starts_with("no_such_module.so: "))
            << failure.what();
    }
}

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

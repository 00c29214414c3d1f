#include "Text/NumberGrouping.h"

#include <gtest/gtest.h>

#include <locale>
#include <sstream>

namespace NSTextPackage {

TEST(NumberGrouping, NamedLocalesBringTheirSigns) {
    const std::pair<const char*, std::wstring> rows[] = {
        {"de-DE", L"1.234.567 0,5"}, {"en-US", L"1,234,567 0.5"}, {"POSIX", L"1,234,567 0.5"}};
    for (const auto& [name, text] : rows) {
        std::wostringstream stream;
        SetNumberGrouping(kNumberGrouping_Always, stream, name, "\3");
        stream << 1234567 << L' ' << 0.5;
        EXPECT_EQ(stream.str(), text) << name;
    }
}

} // namespace NSTextPackage

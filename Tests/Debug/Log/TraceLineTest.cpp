#include "Debug/Log/TraceLine.h"

#include <gtest/gtest.h>

namespace NSDebugPackage {

constexpr NSSupport::SCalendarTime kTime = {2023, 3, 4, 2, 12, 34, 56, 78};

static std::string Format(uint32_t thread, uint32_t level, const std::string& text) {
    TraceLine line;
    FormatTraceLine(kTime, thread, level, text.c_str(), line);
    return line;
}

TEST(TraceLine, LevelsAreBounded) {
    std::string deep = Format(1, 0, "");
    for (int i = 0; i < 100; ++i) {
        deep += "|  ";
    }
    EXPECT_EQ(Format(1, 250, "x"), deep + "x");
}

TEST(TraceLine, FinalCharacterMustBeAscii) {
    const struct {
        const char* fText;
        const char* fKept;
    } cases[] = {
        {"caf\xC3\xA9", "caf"},
        {"cafe", "cafe"},
        {"caf\xC3\xA9s", "caf\xC3\xA9s"},
        {"\xE2\x82\xAC\xE2\x82\xAC", "\xE2\x82\xAC"},
        {"a\xF0\x9F\x98", "a"},
        {"a\xF0\x9F\x98\x80", "a"},
        {"a\xC3", "a"},
        {"a\xA9\xA9", "a"},
        {"", ""},
    };
    const size_t head = Format(1, 0, "").size();
    for (const auto& [text, kept] : cases) {
        EXPECT_EQ(Format(1, 0, text).substr(head), kept);
    }
    const std::string line =
        Format(1, 0, std::string(3998, 'x') + "\xC3\xA9" + std::string(99, 'y'));
    EXPECT_EQ(line.size(), 4095U);
    // The line's end falls inside the character.
    const std::string cut = Format(1, 0, std::string(4094 - head, 'x') + "\xC3\xA9");
    EXPECT_EQ(cut.size(), 4094U);
    EXPECT_EQ(cut.back(), 'x');
}

TEST(TraceLine, FileNames) {
    EXPECT_EQ(MakeLogFileName("X", ".log", kTime), "X 230302 123456.log");
    EXPECT_EQ(MakeMiniDumpName("X", 1, kTime), "X 230302 123456 minidump.dmp");
    EXPECT_EQ(MakeMiniDumpName("X", 2, kTime), "X 230302 123456 minidump 2.dmp");
    EXPECT_EQ(MakeMiniDumpName(std::string(2000, 'X'), 2, kTime), std::string(1023, 'X'));
}

TEST(TraceLine, SourcePaths) {
    EXPECT_EQ(TrimSourcePath("C:\\Dev\\a\\Dev\\b.cpp"), "a\\Dev\\b.cpp");
    EXPECT_EQ(TrimSourcePath("C:\\lib\\boost\\boost\\x.hpp"), "boost\\boost\\x.hpp");
    EXPECT_EQ(TrimSourcePath("C:\\boost\\Dev\\x.hpp"), "x.hpp");
    EXPECT_EQ(TrimSourcePath("C:\\dev\\x.cpp"), "C:\\dev\\x.cpp");
}

} // namespace NSDebugPackage

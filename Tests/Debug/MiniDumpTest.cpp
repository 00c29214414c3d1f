#include "Debug/MiniDump.h"
#include "Debug/CDebugger.h"
#include "Debug/TraceLine.h"
#include "Tests/Debug/TestFolder.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <fstream>

namespace NSDebugPackage {
namespace {

namespace fs = std::filesystem;

constexpr NSSupport::SCalendarTime kTime = {2023, 3, 4, 2, 12, 34, 56, 78};

TEST(MiniDump, TakesTheFirstFreeName) {
    const CTestFolder folder;
    const std::string text = folder.GetUtf8Text();
    for (int n = 1; n < 20; ++n) {
        if (n != 3) {
            std::ofstream(folder.GetPath() / MakeMiniDumpName("X", n, kTime)) << "taken";
        }
    }
    EXPECT_EQ(WriteMiniDumpFile(text, "X", nullptr, kTime),
              text + "X 230302 123456 minidump 3.dmp");
    EXPECT_EQ(WriteMiniDumpFile(text, "X", nullptr, kTime), "");
    EXPECT_EQ(ReadWholeFile(folder.GetPath() / MakeMiniDumpName("X", 1, kTime)), "taken");
    EXPECT_FALSE(fs::exists(folder.GetPath() / MakeMiniDumpName("X", 20, kTime)));
    EXPECT_EQ(WriteMiniDumpFile(text + "missing\\", "X", nullptr, kTime), "");
}

TEST(MiniDump, OfADebugger) {
    const CTestFolder folder;
    CDebugger debugger("X", "Title", 0);
    EXPECT_EQ(debugger.WriteMiniDump(), "");
    debugger.AddLogFile(folder.GetUtf8Text());
    const std::string path = debugger.WriteMiniDump();
    ASSERT_NE(path, "");
    const std::string bytes = ReadWholeFile(ToSystemPath(NSTextPackage::Utf8ToUtf16Default(path)));
    const std::string signature = bytes.substr(0, 4);
    EXPECT_TRUE(signature == "MDMP" || signature == "\x7F"
                                                    "ELF");
}

} // namespace
} // namespace NSDebugPackage

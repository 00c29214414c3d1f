#include "Debug/Dump/MiniDump.h"
#include "Debug/Log/CDebugger.h"
#include "Debug/Log/TraceLine.h"
#include "Tests/Debug/TestFolder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace NSDebugPackage {

namespace fs = std::filesystem;

constexpr NSSupport::SCalendarTime kDumpTime = {2023, 3, 4, 2, 12, 34, 56, 78};

TEST(MiniDump, TakesTheFirstFreeName) {
    const CTestFolder folder;
    const std::string text = folder.GetUtf8Text();
    for (int n = 1; n < 20; ++n) {
        if (n != 3) {
            std::ofstream(folder.GetPath() / MakeMiniDumpName("X", n, kDumpTime)) << "taken";
        }
    }
    EXPECT_EQ(WriteMiniDumpFile(text, "X", nullptr, kDumpTime),
              text + "X 230302 123456 minidump 3.dmp");
    const fs::path third = folder.GetPath() / MakeMiniDumpName("X", 3, kDumpTime);
    const std::string signature = ReadWholeFile(third).substr(0, 4);
    EXPECT_TRUE(signature == "MDMP" || signature == "\177ELF");
    EXPECT_EQ(WriteMiniDumpFile(text, "X", nullptr, kDumpTime), "");
    EXPECT_EQ(ReadWholeFile(folder.GetPath() / MakeMiniDumpName("X", 1, kDumpTime)), "taken");
    EXPECT_FALSE(fs::exists(folder.GetPath() / MakeMiniDumpName("X", 20, kDumpTime)));
    EXPECT_EQ(WriteMiniDumpFile(text + "missing\\", "X", nullptr, kDumpTime), "");
    EXPECT_EQ(CDebugger("X", "Title", 0).WriteMiniDump(), ""); // it has no folder
}

} // namespace NSDebugPackage

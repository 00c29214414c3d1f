#include "Debug/Dump/MiniDump.h"
#include "Debug/Log/CDebugger.h"
#include "Debug/Log/TraceLine.h"
#include "Tests/CTimeZone_posix.h"
#include "Tests/Debug/TestFolder.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <ucontext.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <thread>

namespace NSDebugPackage {

[[gnu::noinline]] std::string DumpFromHere(CDebugger& debugger) {
    std::string path = debugger.WriteMiniDump();
    asm volatile("" : : : "memory"); // keeps the call from becoming a jump
    return path;
}

// Stands in for a handler of a fault that arose here.
[[gnu::noinline]] std::string FaultFromHere(CDebugger& debugger) {
    ucontext_t context{};
    EXPECT_EQ(getcontext(&context), 0);
    return debugger.WriteMiniDumpOnFault(&context);
}

namespace {

class CoreDumpTest : public testing::Test {
protected:
    CoreDumpTest() { fDebugger.AddLogFile(fFolder.GetUtf8Text()); }

    static std::string ToPosix(const std::string& path) {
        return ToSystemPath(NSTextPackage::Utf8ToUtf16Default(path)).string();
    }

    // What gdb says about all threads, empty without gdb.
    static std::string AskDebugger(const std::string& dump) {
        const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
        const std::string command = "command -v gdb >/dev/null && DEBUGINFOD_URLS= gdb -batch -nx "
                                    "-ex 'thread apply all bt' '" +
                                    program + "' '" + dump + "' 2>&1";
        std::string answer;
        FILE* const pipe = popen(command.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (fgets(buffer.data(), buffer.size(), pipe) != nullptr) {
            answer += buffer.data();
        }
        pclose(pipe);
        return answer;
    }

    CTestFolder fFolder;
    CDebugger fDebugger{"X", "Title", 0};
};

TEST_F(CoreDumpTest, IsSmallAndHasATextBesideIt) {
    const std::string dump = ToPosix(DumpFromHere(fDebugger));
    // Small enough to send, also where a sanitizer maps whole terabytes.
    EXPECT_LT(std::filesystem::file_size(dump), size_t{300} << 20);
    const std::string text = ReadWholeFile(dump + ".txt");
    EXPECT_LT(text.find("DumpFromHere"), text.find("\nMemory map:\n")) << text;
    EXPECT_NE(text.find("[stack]\n"), std::string::npos) << text;
    for (const char* const end : {"", ".txt"}) {
        EXPECT_EQ(std::filesystem::status(dump + end).permissions(), std::filesystem::perms(0600));
    }
}

TEST(CoreDump, HasTheLocalTimeInItsName) {
    const CTimeZone zone("XXX-5:45");
    const CTestFolder folder;
    const std::string text = folder.GetUtf8Text();
    const auto before = NSSupport::UtcToLocal(NSSupport::GetUtcTime());
    const std::string dump = WriteMiniDumpFile(text, "X", nullptr);
    const auto after = NSSupport::UtcToLocal(NSSupport::GetUtcTime());
    EXPECT_GE(dump, text + MakeMiniDumpName("X", 1, before));
    EXPECT_LE(dump, text + MakeMiniDumpName("X", 1, after));
}

TEST_F(CoreDumpTest, ShowsTheCallingFunctionAndWaitingThreads) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    std::thread waiting([&] {
        char byte = 0;
        EXPECT_EQ(read(pipes[0], &byte, 1), 1);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const std::string called = AskDebugger(ToPosix(DumpFromHere(fDebugger)));
    const std::string fault = AskDebugger(ToPosix(FaultFromHere(fDebugger)));
    EXPECT_EQ(write(pipes[1], "x", 1), 1);
    waiting.join();
    close(pipes[0]);
    close(pipes[1]);
    if (called.empty()) {
        GTEST_SKIP() << "needs gdb";
    }
    EXPECT_NE(called.find("DumpFromHere"), std::string::npos) << called;
    EXPECT_NE(called.find("read ("), std::string::npos) << called;
    EXPECT_EQ(called.find("truncated"), std::string::npos) << called;
    EXPECT_NE(fault.find("FaultFromHere"), std::string::npos) << fault;
    EXPECT_EQ(fault.find("WriteProcessDump"), std::string::npos) << fault;
}

} // namespace
} // namespace NSDebugPackage

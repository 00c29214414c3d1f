#include "Debug/Log/CDebugger.h"
#include "Tests/Debug/TestFolder.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <elf.h>
#include <sys/procfs.h>
#include <ucontext.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <thread>

namespace NSDebugPackage {

[[gnu::noinline]] std::string DumpFromHere(CDebugger& debugger) {
    volatile char marker[] = "marker on the stack"; // found again in the dump
    std::string path = debugger.WriteMiniDump();
    EXPECT_EQ(marker[0], 'm');
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

TEST_F(CoreDumpTest, IsAnElfCoreWithTheStacks) {
    const std::string bytes = ReadWholeFile(ToPosix(DumpFromHere(fDebugger)));
    Elf64_Ehdr header;
    ASSERT_GE(bytes.size(), sizeof header);
    std::memcpy(&header, bytes.data(), sizeof header);
    EXPECT_EQ(header.e_type, ET_CORE);
    Elf64_Phdr notes;
    std::memcpy(&notes, bytes.data() + header.e_phoff, sizeof notes);
    ASSERT_EQ(notes.p_type, static_cast<uint32_t>(PT_NOTE));
    Elf64_Nhdr note;
    std::memcpy(&note, bytes.data() + notes.p_offset, sizeof note);
    EXPECT_EQ(note.n_type, static_cast<uint32_t>(NT_PRSTATUS));
    EXPECT_EQ(note.n_descsz, sizeof(elf_prstatus));
    EXPECT_NE(bytes.find("marker on the stack", notes.p_offset + notes.p_filesz),
              std::string::npos);
    for (size_t i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment;
        std::memcpy(&segment, bytes.data() + header.e_phoff + i * sizeof segment, sizeof segment);
        EXPECT_LE(segment.p_offset + segment.p_filesz, bytes.size());
    }
    // Small enough to send, also where a sanitizer maps whole terabytes.
    EXPECT_LT(bytes.size(), size_t{300} << 20);
}

TEST_F(CoreDumpTest, HasATextBesideIt) {
    const std::string name = ToPosix(DumpFromHere(fDebugger)) + ".txt";
    const std::string text = ReadWholeFile(name);
    EXPECT_LT(text.find("DumpFromHere"), text.find("\nMemory map:\n")) << text;
    EXPECT_NE(text.find("[stack]\n"), std::string::npos) << text;
    EXPECT_EQ(std::filesystem::status(name).permissions(), std::filesystem::perms(0600));
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
    EXPECT_NE(fault.find("FaultFromHere"), std::string::npos) << fault;
    EXPECT_EQ(fault.find("WriteProcessDump"), std::string::npos) << fault;
}

} // namespace
} // namespace NSDebugPackage

#include "Debug/Log/CLogFile.h"

#include "Debug/Log/CDebugger.h"
#include "Debug/Log/DebugFiles.h"
#include "Debug/Log/DebugPackage.h"
#include "Debug/Log/LogFolders.h"
#include "Debug/Log/TraceLine.h"
#include "Failure/Classes/XClasses.h"
#include "Tests/Debug/TestFolder.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <fstream>

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

namespace fs = std::filesystem;

TEST(LogFile, LinesAreAppended) {
    const CTestFolder folder;
    const fs::path path = folder.GetPath() / "a.log";
    {
        CLogFile log("a.log", folder.GetUtf8Text(), false);
        EXPECT_FALSE(fs::exists(path)); // not before the first line
        log.Write("one", 4096);
        log.Flush();
        log.Write("two \xC3\xA9", 4096);
    }
    {
        CLogFile log("a.log", folder.GetUtf8Text(), false);
        log.Write("three", 4096);
    }
    EXPECT_EQ(ReadWholeFile(path), "one\r\ntwo \xC3\xA9\r\nthree\r\n");
    CLogFile log("a.log", folder.GetUtf8Text(), true);
    EXPECT_FALSE(fs::exists(path));
}

TEST(LogFile, WhatFailsIsDroppedExceptErasing) {
    const CTestFolder folder;
    CLogFile log("a.log", folder.GetUtf8Text() + "missing\\", true);
    log.Write("lost", 4096);
    log.Flush();
    EXPECT_TRUE(fs::is_empty(folder.GetPath()));
    fs::create_directories(folder.GetPath() / "full" / "inside");
    EXPECT_THROW(CLogFile("full", folder.GetUtf8Text(), true), std::exception);
}

TEST(LogFile, ADebuggersOwnFile) {
    const CTestFolder folder;
    std::ofstream(folder.GetPath() / "second.log") << "erased";
    {
        CDebugger debugger("X \xC3\xA9", "Title", 0);
        debugger.AddLogFile(folder.GetUtf8Text());
        debugger.AddLogFileAt(folder.GetUtf8Text() + "second.log", true);
        EXPECT_EQ(debugger.GetLogFolder(), folder.GetUtf8Text());
        EXPECT_EQ(debugger.GetLogFileName().size(),
                  std::string("X \xC3\xA9 230302 123456.log").size());
        debugger.Trace({}, "line");
        const auto name = NSTextPackage::Utf8ToUtf16Default(debugger.GetLogFileName());
        EXPECT_TRUE(ReadWholeFile(ToSystemPath(folder.GetText() + name)).ends_with("line\r\n"));
    }
    const std::string second = ReadWholeFile(folder.GetPath() / "second.log");
    EXPECT_TRUE(second.starts_with("0000000000000000 ") && second.ends_with("line\r\n"));
}

TEST(LogFile, CopiesReplaceFilesAndSpareTheSource) {
    const CTestFolder folder;
    const std::u16string source = folder.GetText() + u"a.log";
    const std::u16string target = folder.GetText() + u"b.log";
    std::ofstream(folder.GetPath() / "a.log") << std::string(100000, 'x');
    std::ofstream(folder.GetPath() / "b.log") << std::string(200000, 'y');
    EXPECT_TRUE(CopyOneFile(source, target));
    EXPECT_EQ(ReadWholeFile(folder.GetPath() / "b.log"), std::string(100000, 'x'));
    EXPECT_FALSE(CopyOneFile(source, source));
    EXPECT_EQ(ReadWholeFile(folder.GetPath() / "a.log").size(), 100000U);
    EXPECT_FALSE(CopyOneFile(folder.GetText() + u"missing.log", target));
    EXPECT_FALSE(CopyOneFile(source, folder.GetText() + u"missing\\b.log"));
}

class UserFolders : public testing::Test {
protected:
    UserFolders() {
        fs::create_directory(fDocuments);
        fs::create_directory(fFolder.GetPath() / "Desktop");
        SetUserHome(fFolder.GetPath());
    }
    ~UserFolders() override { SetUserHome({}); }

    const CTestFolder fFolder;
    const fs::path fDocuments = fFolder.GetPath() / "Documents";
};

TEST_F(UserFolders, HoldLogsOrTheFallBackDoes) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(GetDebugLogFolder("X").ends_with("\\Documents\\Halyard Logs\\X Logs\\"));
        EXPECT_TRUE(fs::is_directory(fDocuments / "Halyard Logs" / "X Logs"));
    }
    fs::remove_all(fDocuments / "Halyard Logs");
    std::ofstream(fDocuments / "Halyard Logs") << "in the way";
    EXPECT_TRUE(GetDebugLogFolder("X").ends_with("\\Documents\\"));
    SetUserHome({});
    EXPECT_EQ(GetDebugLogFolder("X"), "");
    EXPECT_FALSE(CopyLogToFolder(fFolder.GetUtf8Text(), "a.log", "Reports"));
}

TEST_F(UserFolders, TakeTheLogsOfDebuggersByName) {
    const auto open = [] { OpenDebugger("X", "Title", "A"); };
    open();
    TraceToDebugger("X", "lost");
    FlushAllDebuggers();
    EXPECT_EQ(GetDebuggerLogFileName("X"), "");
    EXPECT_TRUE(fs::is_empty(fDocuments));

    InitDebugPackage();
    InitDebugPackage();
    open();
    OpenDebugger("X", "Another", "C");
    EXPECT_FALSE(fs::exists(fDocuments / "Halyard Logs" / "C Logs"));
    OpenDebugger("Y", "Title", "B");
    const std::string folder = GetDebuggerLogFolder("X");
    const std::string name = GetDebuggerLogFileName("X");
    EXPECT_TRUE(folder.ends_with("\\Documents\\Halyard Logs\\A Logs\\"));
    TraceToDebugger("X", "line");
    TraceToDebugger("Z", "lost");
    const int flushCount = GetFileFlushCount();
    FlushAllDebuggers(); // that of "Y" has no file yet
    EXPECT_EQ(GetFileFlushCount(), flushCount + 1);
    EXPECT_TRUE(CopyLogToFolder(folder, name, "Reports"));
    EXPECT_TRUE(
        ReadWholeFile(fFolder.GetPath() / "Desktop" / "Reports" / name).ends_with(" line\r\n"));
    CloseAllDebuggers();
    EXPECT_EQ(GetFileFlushCount(), flushCount + 2);
    EXPECT_TRUE(
        ReadWholeFile(fDocuments / "Halyard Logs" / "A Logs" / name).ends_with(" line\r\n"));
    EXPECT_EQ(GetDebuggerLogFolder("X"), "");
    CloseAllDebuggers();
}

} // namespace NSDebugPackage

#include "Debug/Log/CLogFile.h"

#include "Debug/Log/CDebugger.h"
#include "Debug/Log/DebugFiles.h"
#include "Debug/Log/DebugPackage.h"
#include "Debug/Log/LogFolders.h"
#include "Failure/Classes/XClasses.h"
#include "Tests/Debug/TestFolder.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <fstream>

namespace NSDebugPackage {
namespace {

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

TEST(LogFile, WhatFailsIsDroppedSaveForErasing) {
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
    EXPECT_TRUE(ReadWholeFile(folder.GetPath() / "second.log").ends_with("line\r\n"));
}

TEST(LogFolders, MadeOnceAndFallingBack) {
    const CTestFolder folder;
    const std::u16string logs = folder.GetText() + u"Halyard Logs\\X Logs\\";
    EXPECT_EQ(MakeLogFolder(folder.GetText(), u"X"), logs);
    EXPECT_TRUE(fs::is_directory(folder.GetPath() / "Halyard Logs" / "X Logs"));
    EXPECT_EQ(MakeLogFolder(folder.GetText(), u"X"), logs);
    const std::u16string missing = folder.GetText() + u"missing\\";
    EXPECT_EQ(MakeLogFolder(missing, u"X"), missing);
}

TEST(LogFolders, CopiesReplaceFilesAndSpareTheSource) {
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

TEST(LogFolders, CopiesGoToTheDesktop) {
    const CTestFolder folder;
    std::ofstream(folder.GetPath() / "a.log") << "line";
    const std::string name = folder.GetPath().filename().string();
    std::u16string desktop;
    const bool isThere = FindDesktopFolder(desktop);
    EXPECT_EQ(CopyLogToFolder(folder.GetUtf8Text(), "a.log", name), isThere);
    if (isThere) {
        const fs::path target = ToSystemPath(desktop) / name;
        EXPECT_EQ(ReadWholeFile(target / "a.log"), "line");
        fs::remove_all(target);
    }
}

TEST(DebugPackage, ServesDebuggersByNameWhileItIsStarted) {
    const std::string logs = "LoopDebugTest";
    std::u16string documents;
    const bool isThere = FindDocumentsFolder(documents);
    OpenDebugger("X", "Title", logs);
    TraceToDebugger("X", "lost");
    FlushDebugger("X");
    FlushAllDebuggers();
    EXPECT_EQ(GetDebuggerLogFileName("X"), "");
    EXPECT_FALSE(PathExists(documents + u"Halyard Logs\\LoopDebugTest Logs"));

    InitDebugPackage();
    InitDebugPackage();
    OpenDebugger("X", "Title", logs);
    const std::string name = GetDebuggerLogFileName("X");
    const std::string folder = GetDebuggerLogFolder("X");
    OpenDebugger("X", "Another", "LoopDebugTest 2");
    EXPECT_EQ(GetDebuggerLogFolder("X"), folder);
    TraceToDebugger("X", "line");
    TraceToDebugger("Y", "lost");
    FlushDebugger("X");
    FlushAllDebuggers();
    EXPECT_EQ(isThere, !(folder + name).empty());
    const fs::path path =
        isThere ? ToSystemPath(NSTextPackage::Utf8ToUtf16Default(folder)) / name : fs::path();
    if (isThere) {
        EXPECT_EQ(path.parent_path().filename(), "LoopDebugTest Logs");
        EXPECT_TRUE(ReadWholeFile(path).ends_with(" line\r\n"));
    }
    CloseAllDebuggers();
    EXPECT_EQ(GetDebuggerLogFolder("X"), "");
    CloseAllDebuggers();
    if (isThere) {
        fs::remove(path);
        fs::remove(path.parent_path());
        std::error_code others; // may have logs there
        fs::remove(path.parent_path().parent_path(), others);
    }
}

} // namespace
} // namespace NSDebugPackage

#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"

#include "Tests/FileLib/FileLibTest.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

const std::u16string kTarget = u"C:\\a.wav";
const std::u16string kOther = u"C:\\b.wav";

class SafeSaving : public testing::Test {
protected:
    SafeSaving() {
        fFilesAtStart = fOps.fFiles.size();
        fOps.AddFile(kTarget, "old", 77);
        fOps.fFiles[kTarget]->fTimes.fLastWrite = 78;
    }
    size_t CountNewFiles() const { return fOps.fFiles.size() - fFilesAtStart; }

    CFakeFileOps fOps;
    size_t fFilesAtStart;
};

TEST_F(SafeSaving, CommitPutsTheNewDataUnderTheOldNameAndDate) {
    {
        CSafeOpenReadWriteFileImpl dropped(kTarget);
        WriteText(dropped, "never committed");
    }
    EXPECT_EQ(CountNewFiles(), 1U);
    CSafeOpenReadWriteFileImpl file(kTarget);
    WriteText(file, "new data");
    EXPECT_EQ(fOps.TextOf(kTarget), "old");
    EXPECT_EQ(file.GetSize(), 8);
    file.Commit();
    EXPECT_THROW(file.Commit(), XIllegalCallSequence);
    EXPECT_THROW(file.GetSize(), XIllegalCallSequence);
    EXPECT_EQ(fOps.TextOf(kTarget), "new data");
    EXPECT_EQ(fOps.fFiles[kTarget]->fTimes.fCreation, 77U);
    EXPECT_EQ(fOps.fFiles[kTarget]->fTimes.fLastWrite, 3000U) << "of the new data";
    EXPECT_EQ(fOps.CountCalls("CopyAccessRights"), 2) << "one for each that was opened";
    EXPECT_EQ(CountNewFiles(), 1U);

    const int moves = fOps.CountCalls("Move");
    SaveText(kOther, "new");
    EXPECT_EQ(fOps.TextOf(kOther), "new");
    EXPECT_EQ(fOps.CountCalls("Move"), moves) << "a new target is written in place";
    for (const std::u16string& end : {kTarget, std::u16string(u"C:\\new")}) {
        fOps.fSymbolicLinks[u"C:\\link"] = end;
        SaveText(u"C:\\link", "through a link");
        EXPECT_EQ(fOps.TextOf(end), "through a link");
        EXPECT_FALSE(fOps.HasFile(u"C:\\link"));
    }
}

TEST_F(SafeSaving, RefusesWhatCannotBeSaved) {
    const auto open = [] { CSafeOpenReadWriteFileImpl file(kTarget); };
    EXPECT_EQ(kCreate([] { CSafeOpenReadWriteFileImpl file(u"a.wav"); }), "WinIsValidPath failed");
    fOps.Script("Open", {kError_SharingViolation});
    EXPECT_EQ(TextRaised<XLocked>(open), "WinThrowExceptionForKnownError(ERROR_SHARING_VIOLATION)");
    fOps.fFiles[kTarget]->fAttributes = kAttribute_ReadOnly;
    EXPECT_EQ(TextRaised<XLocked>(open), "file is read only");
    EXPECT_EQ(CountNewFiles(), 1U) << "the second file must not stay behind";
}

TEST_F(SafeSaving, DeletingTheOldDataIsTriedSixTimes) {
    fOps.Script("Delete", {5, 5, 5, 5, 5, 0});
    SaveText(kTarget, "first");
    EXPECT_EQ(fOps.fWaits, std::vector<uint32_t>(5, 30));
    EXPECT_EQ(CountNewFiles(), 1U);
    // The first error is the one that is told.
    fOps.Script("Delete", {kError_AccessDenied, 32, 32, 32, 32, 32});
    EXPECT_THROW(SaveText(kTarget, "new"), XPermission);
    EXPECT_EQ(fOps.CountCalls("Delete"), 12);
    EXPECT_EQ(fOps.TextOf(kTarget), "new");
    fOps.Script("Delete", {kUnknownError, 5, 5, 5, 5, 5});
    EXPECT_EQ(TextRaised<XDelete>([] { SaveText(kTarget, ""); }),
              "DeleteFile failed with unrecognized error type");
}

TEST_F(SafeSaving, ACommitThatFailsLosesNoData) {
    // Two moves give the new file and the reserved one their extension, the third puts the target
    // in the place of the reserved one.
    fOps.Script("Move", {0, 0, 0, kUnknownError});
    EXPECT_THROW(SaveText(kTarget, "new"), XNotFound);
    EXPECT_EQ(fOps.TextOf(kTarget) + fOps.TextOf(u"C:\\tmp1.wav"), "oldnew");
    EXPECT_EQ(CountNewFiles(), 2U);
    fOps.Script("Move", {0, 0, 0, 5, 5});
    EXPECT_THROW(SaveText(kTarget, "newer"), XPermission);
    EXPECT_EQ(fOps.TextOf(u"C:\\tmp4.wav") + fOps.TextOf(u"C:\\tmp3.wav"), "oldnewer");
    EXPECT_FALSE(fOps.HasFile(kTarget));
    EXPECT_EQ(CountNewFiles(), 3U);
}

TEST_F(SafeSaving, SwapIsUndoneWhereverItFails) {
    const struct {
        const char* fOperation;
        std::vector<uint32_t> fCodes;
        std::string fName;
    } kRows[] = {
        {"Open", {kUnknownError}, "CreateFile"},
        {"ReadTimes", {kUnknownError}, "GetFileTime"},
        {"Open", {0, kUnknownError}, "CreateFile"},
        {"WriteTimes", {kUnknownError}, "SetFileTime"},
        // The first move is the one that gives the reserved file its extension.
        {"Move", {0, kUnknownError}, "MoveFileEx()"},
        {"Move", {0, 0, kUnknownError}, "MoveFileEx()"},
        {"Move", {0, 0, 0, kUnknownError}, "MoveFileEx()"},
    };
    fOps.AddFile(kOther, "b", 22);
    for (const auto& row : kRows) {
        fOps.Script(row.fOperation, row.fCodes);
        EXPECT_EQ(kNotFound([] { WinSwapFilesContents(kTarget, kOther); }),
                  row.fName + " failed with unrecognized error type");
        EXPECT_EQ(fOps.TextOf(kTarget) + fOps.TextOf(kOther), "oldb") << row.fOperation;
        EXPECT_EQ(CountNewFiles(), 2U) << row.fOperation;
    }
    fOps.Script("Move", {0, 0, 0, kError_WriteProtect});
    EXPECT_THROW(WinSwapFilesContents(kTarget, kOther), XLocked) << "a known error tells itself";
    EXPECT_EQ(kNotFound([] { WinSwapFilesContents(kTarget, u"C:\\c"); }),
              "WinDoesFileExist failed");
    fOps.fMoveFlags.clear();
    WinSwapFilesContents(kTarget, kOther);
    EXPECT_EQ(fOps.fMoveFlags, (std::vector<uint32_t>{0, 3, 1, 1})) << "all but one go to the disk";
    EXPECT_EQ(fOps.TextOf(kTarget) + fOps.TextOf(kOther), "bold");
    const SFileTimes& times = fOps.fFiles[kTarget]->fTimes;
    EXPECT_EQ(times.fCreation, 77U) << "the first file's date stays";
    EXPECT_EQ(times.fLastWrite, 3000U) << "that of the contents goes with them";
    EXPECT_EQ(fOps.fFiles[kOther]->fTimes.fLastWrite, 78U);
    EXPECT_EQ(CountNewFiles(), 2U);
}

TEST_F(SafeSaving, UniqueFilesAndFoldersTakeTheNextFreeNumber) {
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x.wav"), u"C:\\tmp1.wav");
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x.tmp"), u"C:\\tmp2.tmp");
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x"), u"C:\\tmp3");
    fOps.AddFolder(u"C:\\tmp1.tmp");
    EXPECT_EQ(WinCreateUniqueDirectory(u"C:\\"), u"C:\\tmp3.tmp\\");
    fOps.AddFile(u"C:\\tmp4.wav", "");
    fOps.Script("Move", {kError_FileExists});
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x.wav"), u"C:\\tmp6.wav") << "two were taken";
    const size_t before = CountNewFiles();
    const auto makeFile = [] { WinCreateUniqueFile(u"C:\\", u"x.wav"); };
    const auto makeFolder = [] { WinCreateUniqueDirectory(u"C:\\"); };
    fOps.Script("MakeTempName", {kUnknownError, kUnknownError});
    EXPECT_EQ(kCreate(makeFile), "GetTempFileName() failed to create unique file");
    EXPECT_EQ(kNotFound(makeFolder), "GetTempFileName failed with unrecognized error type");
    fOps.Script("Move", {kUnknownError});
    EXPECT_EQ(kCreate(makeFile), "Failed to create unique file");
    const int moves = fOps.CountCalls("Move");
    fOps.Script("Move", std::vector<uint32_t>(100, kError_AlreadyExists));
    EXPECT_EQ(kCreate(makeFile), "Failed to create unique file");
    EXPECT_EQ(fOps.CountCalls("Move"), moves + 100);
    EXPECT_EQ(kCreate([] { WinCreateUniqueFile(u"C:\\", u"x.a:b"); }),
              "Failed to create unique file");
    fOps.Script("MakeFolder", {kError_AccessDenied, kUnknownError});
    EXPECT_THROW(makeFolder(), XPermission);
    EXPECT_EQ(kCreate(makeFolder), "Failed to create unique directory");
    fOps.Script("MakeFolder", std::vector<uint32_t>(65535, kError_AlreadyExists));
    EXPECT_EQ(kCreate(makeFolder), "Failed to create unique directory");
    EXPECT_EQ(CountNewFiles(), before);
}

TEST_F(SafeSaving, ReadsAndWritesTellWhatWentWrong) {
    COpenReadWriteFileImpl file(kOther, kOpenMode_CreateNew);
    uint8_t bytes[8] = {1, 2, 3, 4};
    file.Write(0, 4, bytes);
    EXPECT_NO_THROW(file.Read(100, 0, bytes));
    fOps.fMostWritten = 3;
    const auto read = TextRaised<XRead>;
    ExpectFailures(
        fOps, {{read, [&] { file.Read(4, 1, bytes); },
                "COpenReadWriteFileImpl::Read start pos beyond file end"},
               {read, [&] { file.Read(3, 2, bytes); }, "ReadFile failed"},
               {read, [&] { file.Read(0, 1, bytes); }, "ReadFile", "Read"},
               {TextRaised<XWrite>, [&] { file.Write(0, 1, bytes); }, "WriteFile", "Write"},
               {TextRaised<XWrite>, [&] { file.Write(0, 4, bytes); },
                "WriteFile failed with unrecognized error type"}, // cut short
               {read, [&] { file.GetSize(); }, "GetFileSize", "ReadSize"},
               {kNotFound, [] { COpenReadFileImpl missing(u"C:\\c"); }, "WinDoesFileExist failed"},
               {kNotFound, [] { COpenReadFileImpl folder(u"C:\\Temp\\"); },
                "WinIsValidFilePath failed"}});
    fOps.Script("Write", {kError_DiskFull});
    EXPECT_THROW(file.Write(0, 1, bytes), XOutOfSpace);
}

} // namespace

} // namespace NSFileLibInternals

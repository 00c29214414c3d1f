#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/SwapFilesContents.h"
#include "FileLib/Implementation/UniqueNames.h"
#include "Tests/FileLib/TextRaised.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

const std::u16string kTarget = u"C:\\a.wav";
const std::u16string kOther = u"C:\\b.wav";

void WriteText(CSafeOpenReadWriteFileImpl& file, const std::string& text) {
    file.Write(0, static_cast<int64_t>(text.size()), reinterpret_cast<const uint8_t*>(text.data()));
}

class SafeSaving : public testing::Test {
protected:
    SafeSaving() {
        fFilesAtStart = fOps.fFiles.size();
        fOps.AddFile(kTarget, "old", 77);
    }

    size_t CountNewFiles() const { return fOps.fFiles.size() - fFilesAtStart; }
    static void Save(const std::u16string& path, const std::string& text) {
        CSafeOpenReadWriteFileImpl file(path);
        WriteText(file, text);
        file.Commit();
    }

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
    EXPECT_EQ(fOps.CountCalls("CopyAccessRights"), 2) << "one for each that was opened";
    EXPECT_EQ(CountNewFiles(), 1U);

    const int moves = fOps.CountCalls("Move");
    Save(kOther, "new");
    EXPECT_EQ(fOps.TextOf(kOther), "new");
    EXPECT_EQ(fOps.CountCalls("Move"), moves) << "a new target is written in place";
}

TEST_F(SafeSaving, RefusesWhatCannotBeSaved) {
    EXPECT_EQ(TextRaised<XCreate>([] { CSafeOpenReadWriteFileImpl file(u"a.wav"); }),
              "WinIsValidPath failed");
    fOps.Script("Open", {kError_SharingViolation});
    EXPECT_EQ(TextRaised<XLocked>([] { CSafeOpenReadWriteFileImpl file(kTarget); }),
              "WinThrowExceptionForKnownError(ERROR_SHARING_VIOLATION)");
    fOps.fFiles[kTarget]->fAttributes = kAttribute_ReadOnly;
    EXPECT_EQ(TextRaised<XLocked>([] { CSafeOpenReadWriteFileImpl file(kTarget); }),
              "file is read only");
    EXPECT_EQ(CountNewFiles(), 1U) << "the second file must not stay behind";
}

TEST_F(SafeSaving, DeletingTheOldDataIsTriedSixTimes) {
    fOps.Script("Delete", {5, 5, 5, 5, 5, 0});
    Save(kTarget, "first");
    EXPECT_EQ(fOps.fWaits, std::vector<uint32_t>(5, 30));
    EXPECT_EQ(CountNewFiles(), 1U);
    // The first error is the one that is told.
    fOps.Script("Delete", {kError_AccessDenied, 32, 32, 32, 32, 32});
    EXPECT_THROW(Save(kTarget, "new"), XPermission);
    EXPECT_EQ(fOps.CountCalls("Delete"), 12);
    EXPECT_EQ(fOps.TextOf(kTarget), "new");
    fOps.Script("Delete", {kUnknownError, 5, 5, 5, 5, 5});
    EXPECT_EQ(TextRaised<XDelete>([] { Save(kTarget, ""); }),
              "DeleteFile failed with unrecognized error type");
}

TEST_F(SafeSaving, AFailedSwapLosesNoData) {
    // Two moves give the new file and the reserved one their extension, the third puts the target
    // in the place of the reserved one.
    fOps.Script("Move", {0, 0, 0, kUnknownError});
    EXPECT_THROW(Save(kTarget, "new"), XNotFound);
    EXPECT_EQ(fOps.TextOf(kTarget), "old");
    EXPECT_EQ(CountNewFiles(), 1U);
    fOps.Script("Move", {0, 0, 0, 5, 5});
    EXPECT_THROW(Save(kTarget, "new"), XPermission);
    EXPECT_FALSE(fOps.HasFile(kTarget));
    EXPECT_EQ(CountNewFiles(), 2U) << "the old data and the new, each under a name of its own";
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
        EXPECT_EQ(TextRaised<XNotFound>([] { WinSwapFilesContents(kTarget, kOther); }),
                  row.fName + " failed with unrecognized error type");
        EXPECT_EQ(fOps.TextOf(kTarget) + fOps.TextOf(kOther), "oldb") << row.fOperation;
        EXPECT_EQ(CountNewFiles(), 2U) << row.fOperation;
    }
    fOps.Script("Move", {0, 0, 0, kError_WriteProtect});
    EXPECT_THROW(WinSwapFilesContents(kTarget, kOther), XLocked) << "a known error tells itself";
    fOps.fMoveFlags.clear();
    WinSwapFilesContents(kTarget, kOther);
    EXPECT_EQ(fOps.fMoveFlags, (std::vector<uint32_t>{0, 3, 1, 1})) << "all but one go to the disk";
    EXPECT_EQ(fOps.TextOf(kTarget) + fOps.TextOf(kOther), "bold");
    EXPECT_EQ(fOps.fFiles[kTarget]->fTimes.fCreation, 77U) << "the first file's date stays";
    EXPECT_EQ(CountNewFiles(), 2U);
}

TEST_F(SafeSaving, UniqueFilesAndFoldersTakeTheNextFreeNumber) {
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x.wav"), u"C:\\tmp1.wav");
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x.tmp"), u"C:\\tmp2.tmp");
    EXPECT_EQ(WinCreateUniqueFile(u"C:\\", u"x"), u"C:\\tmp3");
    fOps.AddFolder(u"C:\\tmp1.tmp");
    EXPECT_EQ(WinCreateUniqueDirectory(u"C:\\"), u"C:\\tmp3.tmp\\");
    const size_t before = CountNewFiles();
    const auto makeFile = [] { WinCreateUniqueFile(u"C:\\", u"x.wav"); };
    const auto makeFolder = [] { WinCreateUniqueDirectory(u"C:\\"); };
    fOps.Script("MakeTempName", {kUnknownError, kUnknownError});
    EXPECT_EQ(TextRaised<XCreate>(makeFile), "GetTempFileName() failed to create unique file");
    EXPECT_EQ(TextRaised<XNotFound>(makeFolder),
              "GetTempFileName failed with unrecognized error type");
    fOps.Script("Move", {kError_AlreadyExists});
    EXPECT_EQ(TextRaised<XCreate>(makeFile), "Failed to create unique file");
    EXPECT_EQ(TextRaised<XCreate>([] { WinCreateUniqueFile(u"C:\\", u"x.a:b"); }),
              "Failed to create unique file");
    fOps.Script("MakeFolder", {kError_AccessDenied, kUnknownError});
    EXPECT_THROW(makeFolder(), XPermission);
    EXPECT_EQ(TextRaised<XCreate>(makeFolder), "Failed to create unique directory");
    fOps.Script("MakeFolder", std::vector<uint32_t>(65535, kError_AlreadyExists));
    EXPECT_EQ(TextRaised<XCreate>(makeFolder), "Failed to create unique directory");
    EXPECT_EQ(CountNewFiles(), before);
}

TEST_F(SafeSaving, ReadsAndWritesTellWhatWentWrong) {
    COpenReadWriteFileImpl file(kOther, kOpenMode_CreateNew);
    uint8_t bytes[8] = {1, 2, 3, 4};
    file.Write(0, 4, bytes);
    EXPECT_NO_THROW(file.Read(100, 0, bytes));
    ExpectFailures(fOps,
                   {{TextRaised<XRead>, [&] { file.Read(4, 1, bytes); },
                     "COpenReadWriteFileImpl::Read start pos beyond file end"},
                    {TextRaised<XRead>, [&] { file.Read(3, 2, bytes); }, "ReadFile failed"},
                    {TextRaised<XRead>, [&] { file.Read(0, 1, bytes); }, "ReadFile", "Read"},
                    {TextRaised<XWrite>, [&] { file.Write(0, 1, bytes); }, "WriteFile", "Write"},
                    {TextRaised<XRead>, [&] { file.GetSize(); }, "GetFileSize", "ReadSize"},
                    {TextRaised<XNotFound>, [] { COpenReadFileImpl missing(u"C:\\c"); },
                     "WinDoesFileExist failed"},
                    {TextRaised<XNotFound>, [] { COpenReadFileImpl folder(u"C:\\Temp\\"); },
                     "WinIsValidFilePath failed"}});
    fOps.Script("Write", {kError_DiskFull});
    EXPECT_THROW(file.Write(0, 1, bytes), XOutOfSpace);
}

} // namespace

} // namespace NSFileLibInternals

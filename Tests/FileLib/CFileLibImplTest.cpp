#include "FileLib/Source/Win/FileLibImplWin.h"

#include "Failure/XClasses.h"
#include "FileLib/Source/Win/FileFunctionsWin.h"
#include "Tests/FileLib/CFakeFileOps.h"
#include "Tests/FileLib/TextRaised.h"

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

constexpr uint32_t kUnknownError = 1000;
const std::u16string kAlias = u"C:\\a.lnk";

class FileLibImpl : public testing::Test {
protected:
    FileLibImpl() { fOps.AddFile(u"C:\\Temp\\a.txt", "text", 5); }

    CFakeFileOps fOps;
    CFileLibImpl fImpl;
};

TEST_F(FileLibImpl, InterpretsURLs) {
    const struct {
        const char* fURL;
        ESpecKind fKind;
        const char16_t* fPath;
    } kRows[] = {{"file://C:\\Temp\\a.txt", ESpecKind::kFile, u"C:\\Temp\\a.txt"},
                 {"file://C:/Temp/a.txt", ESpecKind::kFile, u"C:\\Temp\\a.txt"},
                 {"C:/Temp/", ESpecKind::kFolder, u"C:\\Temp\\"},
                 {"file://C:\\", ESpecKind::kFolder, u"C:\\"}};
    for (const auto& row : kRows) {
        const SSpecPath spec = fImpl.InterpretURL(row.fURL);
        EXPECT_EQ(spec.fKind, row.fKind) << row.fURL;
        EXPECT_EQ(spec.fPath, row.fPath);
    }
    EXPECT_EQ(fImpl.GetURL(u"C:\\Temp\\\xE9"), "file://C:\\Temp\\\xC3\xA9");
    for (const char* url : {"file://C:\\None\\", "file:///", "C:\\Temp\\a.txt\\"}) {
        EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid dir path or dir does not exist");
    }
    for (const char* url : {"file://C:\\Temp", "", "file://", "C:\\none", "C:\\a?"}) {
        EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid file path or dir does not exist");
    }
}

TEST_F(FileLibImpl, SpecsNameWhatNeedNotExist) {
    EXPECT_EQ(fImpl.MakeVolumePath(u"Q:"), u"Q:\\");
    EXPECT_EQ(fImpl.MakeFilePath(u"C:\\none\\b"), u"C:\\none\\b");
    EXPECT_EQ(fImpl.MakeFolderPath(u"C:\\none"), u"C:\\none\\");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.MakeFolderPath(u"C:\\Temp\\a.txt"); }),
              "CFileLibImpl::WinExtensions_CreateDirSpec taret is not a directory");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.MakeFolderPath(u"a"); }), "WinIsValidPath failed");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.MakeFilePath(u"C:\\a\\"); }),
              "WinIsValidFilePath failed");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.MakeVolumePath(u"C:\\a"); }),
              "WinIsValidVolumePath failed");
}

TEST_F(FileLibImpl, LooksUpChildren) {
    EXPECT_EQ(fImpl.GetChildFile(u"C:\\Temp\\", u"a.txt"), u"C:\\Temp\\a.txt");
    EXPECT_EQ(fImpl.GetChildDirectory(u"C:\\", u"Temp"), u"C:\\Temp\\");
    EXPECT_EQ(fImpl.GetChildDirectory(u"C:\\Temp\\", u"."), u"C:\\Temp\\");
    EXPECT_EQ(fImpl.GetChildDirectory(u"C:\\Temp\\", u".."), u"C:\\");
    EXPECT_FALSE(fImpl.DoesChildFileExist(u"C:\\", u"Temp"));
    EXPECT_FALSE(fImpl.DoesChildFolderExist(u"C:\\Temp\\", u"a.txt"));
    EXPECT_FALSE(fImpl.DoesChildFileExist(u"C:\\", u"Temp\\a.txt")) << "a path is no name";
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.GetChildFile(u"C:\\", u"Temp"); }),
              "fImpl.GetChildFile child file does not exist");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.GetChildDirectory(u"C:\\", u"none"); }),
              "fImpl.GetChildDirectory child directory does not exist");
    bool isFolder = true;
    EXPECT_EQ(fImpl.GetChildInfo(u"C:\\Temp\\", u"a.txt", isFolder).fSizeLow, 4U);
    EXPECT_FALSE(isFolder);
}

TEST_F(FileLibImpl, TellsAndSetsInfo) {
    SFileInfo info = fImpl.GetFileInfo(u"C:\\Temp\\a.txt");
    EXPECT_EQ(info.fCreationTime, 5);
    EXPECT_EQ(info.fHidden + info.fReadOnly + info.fAlias, 0);
    EXPECT_NO_THROW(fImpl.GetFolderInfo(u"C:\\"));
    SPlatformEntry entry;
    entry.fName = u"x.LNK";
    entry.fAttributes = kAttribute_ReadOnly | kAttribute_Hidden;
    entry.fSize = (uint64_t{7} << 32) | 9;
    const SFileInfo all = FileInfoOfEntry(entry);
    EXPECT_EQ(all.fHidden * 100 + all.fReadOnly * 10 + all.fAlias, 111);
    EXPECT_EQ(all.fSizeHigh, 7U);
    EXPECT_EQ(all.fSizeLow, 9U);

    info.fReadOnly = 1;
    info.fCreationTime = 0;
    info.fLastWriteTime = 42;
    fImpl.SetFileInfo(u"C:\\Temp\\a.txt", info);
    const SFileInfo after = fImpl.GetFileInfo(u"C:\\Temp\\a.txt");
    EXPECT_EQ(after.fReadOnly, 1);
    EXPECT_EQ(after.fCreationTime, 5);
    EXPECT_EQ(after.fLastWriteTime, 42);

    const struct {
        const char* fOperation;
        const char* fText;
    } kRows[] = {
        {"WriteAttributes", "SetFileAttributes failed with unrecognized error type"},
        {"Open", "CreateFile failed with unrecognized error type"},
        {"WriteTimes", "SetFileTime failed with unrecognized error type"},
    };
    for (const auto& row : kRows) {
        info.fHidden = 1 - info.fHidden;
        fOps.Script(row.fOperation, {kUnknownError});
        EXPECT_EQ(TextRaised<XWrite>([&] { fImpl.SetFileInfo(u"C:\\Temp\\a.txt", info); }),
                  row.fText);
    }
    fOps.Script("ReadAttributes", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.SetFileInfo(u"C:\\Temp\\a.txt", info); }),
              "GetFileAttributes failed with unrecognized error type");
    fOps.Script("FindEntry", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.GetFileInfo(u"C:\\Temp\\a.txt"); }),
              "WinGetFileInfo FindFirstFile failed");
}

TEST_F(FileLibImpl, ChangesFoldersAndFiles) {
    EXPECT_EQ(fImpl.CreateFolder(u"C:\\", u"new"), u"C:\\new\\");
    EXPECT_EQ(TextRaised<XCreate>([&] { fImpl.CreateFolder(u"C:\\", u"new"); }),
              "CreateDirectory failed");
    EXPECT_EQ(TextRaised<XCreate>([&] { fImpl.CreateFolder(u"C:\\", u"a:b"); }),
              "WinIsValidPath failed");
    fOps.Script("RemoveFolder", {kError_DirNotEmpty});
    EXPECT_EQ(TextRaised<XDelete>([&] { fImpl.DeletePhysicalDirectory(u"C:\\new\\"); }),
              "RemoveDirectory failed with unrecognized error type");
    fImpl.DeletePhysicalDirectory(u"C:\\new\\");
    EXPECT_FALSE(fOps.HasFile(u"C:\\new"));
    fOps.Script("Delete", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.DeletePhysicalFile(u"C:\\Temp\\a.txt"); }),
              "DeleteFile failed with unrecognized error type");
    fOps.Script("Move", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinMoveFileEx(u"C:\\a", u"C:\\b", 0); }),
              "MoveFileEx() failed with unrecognized error type");
    fOps.Script("ReadLongPath", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinNormalizePath(u"C:\\Temp"); }),
              "GetLongPathName failed with unrecognized error type");
}

TEST_F(FileLibImpl, ScansAFolderToItsEnd) {
    fOps.AddFolder(u"C:\\Temp\\sub");
    fOps.AddFile(u"C:\\Temp\\sub\\deep", "");
    const auto scanner = fImpl.CreateDirScanner(u"C:\\Temp\\");
    EXPECT_EQ(scanner->GetName(), u"a.txt");
    EXPECT_FALSE(scanner->IsFolder());
    scanner->Advance();
    EXPECT_EQ(scanner->GetName(), u"sub");
    EXPECT_TRUE(scanner->IsFolder());
    scanner->Advance();
    EXPECT_TRUE(scanner->IsAtEnd());
    EXPECT_THROW(scanner->Advance(), XIllegalCallSequence);
    EXPECT_THROW(scanner->GetInfo(), XIllegalCallSequence);
    EXPECT_TRUE(fImpl.CreateDirScanner(u"C:\\Windows\\")->IsAtEnd());
    fOps.Script("FindFirst", {kError_PathNotFound});
    EXPECT_THROW(fImpl.CreateDirScanner(u"C:\\none\\"), XNotFound);
}

TEST_F(FileLibImpl, AliasesLeadToFilesAndFolders) {
    fImpl.CreateAlias(kAlias, u"C:\\Temp\\a.txt");
    SSpecPath spec = fImpl.ResolvePossibleAlias(kAlias);
    EXPECT_EQ(spec.fKind, ESpecKind::kFile);
    EXPECT_EQ(spec.fPath, u"C:\\Temp\\a.txt");
    fOps.fLinks[kAlias].fTarget = u"C:\\Temp";
    spec = fImpl.ResolvePossibleAlias(kAlias);
    EXPECT_EQ(spec.fKind, ESpecKind::kFolder);
    EXPECT_EQ(spec.fPath, u"C:\\Temp\\");
}

TEST_F(FileLibImpl, AliasesFailInTheirOwnWords) {
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.CreateAlias(kAlias, u"C:\\none"); }),
              "CFileLibImpl::CreateAlias source file does not exist");
    EXPECT_EQ(TextRaised<XNotFound>([&] { fImpl.CreateAlias(kAlias, u"C:\\Temp\\"); }),
              "CFileLibImpl::CreateAlias source file is not a file");
    fOps.Script("CreateShellLink", {kOLE_AccessDenied});
    EXPECT_EQ(TextRaised<XPermission>([&] { fImpl.CreateAlias(kAlias, u"C:\\Temp\\a.txt"); }),
              "WinHandleOLEError E_ACCESSDENIED");

    const auto resolve = [&](const std::u16string& alias) {
        return [this, alias] { fImpl.ResolvePossibleAlias(alias); };
    };
    EXPECT_EQ(TextRaised<XNotFound>(resolve(kAlias)),
              "CFileLibImpl::ResolvePossibleAlias alias file does not exist");
    EXPECT_EQ(TextRaised<XNotFound>(resolve(u"C:\\Temp\\")),
              "CFileLibImpl::ResolvePossibleAlias alias file is not a file");
    EXPECT_EQ(TextRaised<XResolve>(resolve(u"C:\\Temp\\a.txt")),
              "CFileLibImpl::ResolvePossibleAlias alias file is not an alias");

    fOps.AddFile(kAlias, "link");
    const std::u16string there = u"C:\\Temp\\a.txt";
    const struct {
        SFakeLink fLink;
        const char* fText;
    } kRows[] = {
        {{kOLE_BadFormat, ELinkStep::kLoad, there},
         "CFileLibImpl::ResolvePossibleAlias alias file is not an alias"},
        {{0x80004005, ELinkStep::kLoad, there}, "persistFile->Load failed"},
        {{0x80004005, ELinkStep::kCreate, there}, "WinHandleOLEError unrecognized OLE error"},
        {{0, ELinkStep::kDone, u""}, "shellLink->GetIDList returned NULL but no error"},
    };
    for (const auto& row : kRows) {
        fOps.fLinks[kAlias] = row.fLink;
        EXPECT_EQ(TextRaised<XResolve>(resolve(kAlias)), row.fText);
    }
    fOps.fLinks[kAlias] = {0, ELinkStep::kDone, u"C:\\none"};
    EXPECT_EQ(TextRaised<XNotFound>(resolve(kAlias)),
              "WinFindShortcutTarget target does not exist");
    fOps.fLinks[kAlias].fTarget = there;
    fOps.Script("ReadAttributes", {kError_AccessDenied, kError_AccessDenied});
    EXPECT_EQ(TextRaised<XResolve>(resolve(kAlias)),
              "CFileLibImpl::ResolvePossibleAlias target is of unknown type");
    fOps.fHasItemPaths = false;
    EXPECT_EQ(TextRaised<XNotFound>(resolve(kAlias)), "SHGetPathFromIDList failed");
}

} // namespace

} // namespace NSFileLibInternals

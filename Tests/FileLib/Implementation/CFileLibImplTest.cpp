#include "FileLib/Implementation/CFileLibImpl.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "Tests/FileLib/TextRaised.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

const std::u16string kFile = u"C:\\Temp\\a.txt";
const std::u16string kAlias = u"C:\\a.lnk";
const auto kNotFound = TextRaised<XNotFound>;

class FileLibImpl : public testing::Test {
protected:
    FileLibImpl() { fOps.AddFile(kFile, "text", 5); }

    CFakeFileOps fOps;
};

TEST_F(FileLibImpl, InterpretsURLs) {
    for (const auto& [url, path] : {std::pair("file://C:\\Temp\\a.txt", u"C:\\Temp\\a.txt"),
                                    {"file://C:/Temp/a.txt", u"C:\\Temp\\a.txt"},
                                    {"C:/Temp/", u"C:\\Temp\\"},
                                    {"file://C:\\", u"C:\\"}}) {
        const SSpecPath spec = CFileLibImpl::InterpretURL(url);
        EXPECT_EQ(spec.fKind, path == kFile ? ESpecKind::kFile : ESpecKind::kFolder) << url;
        EXPECT_EQ(spec.fPath, path);
    }
    EXPECT_EQ(CFileLibImpl::GetURL(u"C:\\Temp\\\xE9"), "file://C:\\Temp\\\xC3\xA9");
    for (const char* url : {"file://C:\\None\\", "file:///", "C:\\Temp\\a.txt\\"}) {
        EXPECT_EQ(kNotFound([&] { CFileLibImpl::InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid dir path or dir does not exist");
    }
    for (const char* url : {"file://C:\\Temp", "", "file://", "C:\\none", "C:\\a?"}) {
        EXPECT_EQ(kNotFound([&] { CFileLibImpl::InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid file path or dir does not exist");
    }
}

TEST_F(FileLibImpl, TellsAndSetsInfo) {
    SPlatformEntry entry;
    entry.fName = u"x.LNK";
    entry.fAttributes = kAttribute_ReadOnly | kAttribute_Hidden;
    entry.fSize = (uint64_t{7} << 32) | 9;
    const NSFileLib::SFileInfo all = FileInfoOfEntry(entry);
    EXPECT_EQ(all.fHidden * 100 + all.fReadOnly * 10 + all.fAlias, 111);
    EXPECT_EQ(all.fSizeHigh, 7U);
    EXPECT_EQ(all.fSizeLow, 9U);

    NSFileLib::SFileInfo info = WinGetFileInfo(kFile);
    EXPECT_EQ(info.fHidden + info.fReadOnly + info.fAlias, 0);
    info.fCreationTime = 0; // stays as it is
    info.fLastWriteTime = 42;
    WinSetFileInfo(kFile, info);
    EXPECT_EQ(WinGetFileInfo(kFile).fCreationTime, 5);
    EXPECT_EQ(WinGetFileInfo(kFile).fLastWriteTime, 42);
    EXPECT_NO_THROW(WinGetFileInfo(u"C:\\"));
}

TEST_F(FileLibImpl, FailsInTheWordsOfTheCall) {
    fOps.AddFolder(u"C:\\new");
    NSFileLib::SFileInfo info = WinGetFileInfo(kFile);
    const auto change = [&] {
        info.fHidden = 1 - info.fHidden;
        WinSetFileInfo(kFile, info);
    };
    const auto create = TextRaised<XCreate>;
    fOps.Script("FindEntry", {kUnknownError});
    fOps.Script("FindNext", {0, kUnknownError});
    const std::u16string root = u"C:\\";
    ExpectFailures(
        fOps,
        {{TextRaised<XWrite>, change, "SetFileAttributes", "WriteAttributes"},
         {TextRaised<XWrite>, change, "CreateFile", "Open"},
         {TextRaised<XWrite>, change, "SetFileTime", "WriteTimes"},
         {kNotFound, change, "GetFileAttributes", "ReadAttributes"},
         {kNotFound, [&] { WinGetFileInfo(kFile); }, "WinGetFileInfo FindFirstFile failed"},
         {kNotFound, [&] { std::make_unique<CDirScannerImpl>(root)->Advance(); },
          "WinGetFileInfo FindFirstFile failed"},
         {create, [&] { CFileLibImpl::CreateFolder(root, u"new"); }, "CreateDirectory failed"},
         {create, [&] { CFileLibImpl::CreateFolder(root, u"a:b"); }, "WinIsValidPath failed"},
         {TextRaised<XDelete>, [&] { WinDeletePhysicalDirectory(u"C:\\new\\"); }, "RemoveDirectory",
          "RemoveFolder"},
         {kNotFound, [&] { WinDeletePhysicalFile(kFile); }, "DeleteFile", "Delete"},
         {kNotFound, [] { WinMoveFileEx(kFile, u"C:\\b", 0); }, "MoveFileEx()", "Move"},
         {kNotFound, [] { WinNormalizePath(u"C:\\Temp"); }, "GetLongPathName", "ReadLongPath"},
         {kNotFound, [&] { CFileLibImpl::MakeFolderPath(kFile); },
          "CFileLibImpl::WinExtensions_CreateDirSpec taret is not a directory"},
         {kNotFound, [&] { CFileLibImpl::MakeFolderPath(u"a"); }, "WinIsValidPath failed"},
         {kNotFound, [&] { CFileLibImpl::MakeFilePath(u"C:\\a\\"); }, "WinIsValidFilePath failed"},
         {kNotFound, [&] { CFileLibImpl::MakeVolumePath(u"C:\\a"); },
          "WinIsValidVolumePath failed"},
         {kNotFound, [&] { CFileLibImpl::GetChildFile(root, u"Temp"); },
          "fImpl.GetChildFile child file does not exist"},
         {kNotFound, [&] { CFileLibImpl::GetChildDirectory(root, u"none"); },
          "fImpl.GetChildDirectory child directory does not exist"}});
}

TEST_F(FileLibImpl, AliasesFailInTheirOwnWords) {
    fOps.Script("CreateShellLink", {kOLE_AccessDenied});
    EXPECT_EQ(TextRaised<XPermission>([&] { CFileLibImpl::CreateAlias(kAlias, kFile); }),
              "WinHandleOLEError E_ACCESSDENIED");
    const auto resolve = [&] { CFileLibImpl::ResolvePossibleAlias(kAlias); };
    ExpectFailures(
        fOps, {{TextRaised<XCreate>, [&] { CFileLibImpl::CreateAlias(u"C:\\a?.lnk", kFile); },
                "WinIsValidFilePath failed"},
               {kNotFound, [&] { CFileLibImpl::CreateAlias(kAlias, u"C:\\none"); },
                "CFileLibImpl::CreateAlias source file does not exist"},
               {kNotFound, [&] { CFileLibImpl::CreateAlias(kAlias, u"C:\\Temp\\"); },
                "CFileLibImpl::CreateAlias source file is not a file"},
               {kNotFound, resolve, "CFileLibImpl::ResolvePossibleAlias alias file does not exist"},
               {kNotFound, [&] { CFileLibImpl::ResolvePossibleAlias(u"C:\\Temp\\"); },
                "CFileLibImpl::ResolvePossibleAlias alias file is not a file"},
               {TextRaised<XResolve>, [&] { CFileLibImpl::ResolvePossibleAlias(kFile); },
                "CFileLibImpl::ResolvePossibleAlias alias file is not an alias"}});

    CFileLibImpl::CreateAlias(kAlias, kFile);
    EXPECT_EQ(CFileLibImpl::ResolvePossibleAlias(kAlias).fPath, kFile);
    for (const auto& [link, text] :
         {std::pair(SFakeLink{kOLE_BadFormat, ELinkStep::kLoad, kFile},
                    "CFileLibImpl::ResolvePossibleAlias alias file is not an alias"),
          {{0x80004005, ELinkStep::kLoad, kFile}, "persistFile->Load failed"},
          {{0x80004005, ELinkStep::kCreate, kFile}, "WinHandleOLEError unrecognized OLE error"},
          {{0, ELinkStep::kDone, u""}, "shellLink->GetIDList returned NULL but no error"}}) {
        fOps.fLinks[kAlias] = link;
        EXPECT_EQ(TextRaised<XResolve>(resolve), text);
    }
    fOps.fLinks[kAlias] = {0, ELinkStep::kDone, u"C:\\none"};
    EXPECT_EQ(kNotFound(resolve), "WinFindShortcutTarget target does not exist");
    fOps.fLinks[kAlias].fTarget = kFile;
    fOps.Script("ReadAttributes", {kError_AccessDenied, kError_AccessDenied});
    EXPECT_EQ(TextRaised<XResolve>(resolve),
              "CFileLibImpl::ResolvePossibleAlias target is of unknown type");
    fOps.fHasItemPaths = false;
    EXPECT_EQ(kNotFound(resolve), "SHGetPathFromIDList failed");
}

} // namespace

} // namespace NSFileLibInternals

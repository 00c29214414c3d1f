#include "FileLib/Glue/CFileLibGlue.h"

#include "FileLib/Glue/CDirScannerGlue.h"
#include "FileLib/Glue/OpenFileGlue.h"
#include "FileLib/Glue/SpecGlue.h"
#include "Tests/FileLib/CFakeFileOps.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSFileLib;
using G = CFileLibGlue;

class CFileLibGlueTest : public testing::Test {
protected:
    CFileLibGlueTest() {
        fOps.AddFile(u"C:\\Temp\\a.txt", "text");
        fOps.AddFolder(u"C:\\Temp\\Sub");
    }

    // The object that an operation of the glue gives, with the status that must stand beside it.
    template <class TOperation, class... TArguments>
    auto Ask(int32_t status, const TOperation& operation, const TArguments&... arguments) {
        int32_t found = 0;
        auto* const object = (fLib.*operation)(arguments..., &found);
        EXPECT_EQ(found, status);
        EXPECT_EQ(found == 5000, object != nullptr);
        return std::unique_ptr<std::remove_pointer_t<decltype(object)>>(object);
    }
    template <class TOperation, class... TArguments>
    std::u16string Path(const TOperation& operation, const TArguments&... arguments) {
        return PathOf(Ask(5000, operation, arguments...).get());
    }

    // What an operation left in fText or fAnswer, with the status that it answered.
    void ExpectText(int32_t status, const std::u16string& text) const {
        EXPECT_EQ(std::pair(status, std::u16string(fText)), std::pair(5000, text));
    }
    void ExpectAnswer(int32_t status, int32_t answer) const {
        EXPECT_EQ(std::pair(status, fAnswer), std::pair(5000, answer));
    }

    CFakeFileOps fOps;
    CFileLibGlue fLib;
    const CVolumeSpecGlue fVolume{u"C:\\"};
    const CDirSpecGlue fTemp{u"C:\\Temp\\"};
    const CFileSpecGlue fFile{u"C:\\Temp\\a.txt"};
    const CFileSpecGlue fMissing{u"C:\\Temp\\none"};
    char16_t fText[kFileLibTextUnits] = {};
    char fURL[kFileLibTextUnits] = {};
    int32_t fAnswer = 0;
    SFileInfo fInfo = {};
    // What InterpretURL and ResolvePossibleAlias answer.
    IVolumeSpec* fVolumeFound = nullptr;
    IDirSpec* fDirFound = nullptr;
    IFileSpec* fFileFound = nullptr;
};

// A spec that another library made.
class CForeignFile : public IFileSpec {
    int32_t GetName(char16_t*) const override { return 5000; }
    IFileSpec* CreateCopy(int32_t*) const override { return nullptr; }
    int32_t IsEqual(const IFileSpec*, int32_t*) const override { return 5000; }
    int32_t IsValid() const override { return 1; }
};

} // namespace

TEST_F(CFileLibGlueTest, FourPlacesHaveFixedAnswers) {
    EXPECT_EQ(fLib.IsValid(), 1);
    EXPECT_EQ(fLib.SetDebugger(nullptr), 5005);
    EXPECT_EQ(fLib.UnsupportedOperation(), 5005);
    EXPECT_EQ(fLib.UnsupportedQuery(), 0);
    EXPECT_EQ(fLib.GetWinExtensions(), static_cast<IFileLibWinExtensions*>(&fLib));
}

TEST_F(CFileLibGlueTest, RefusesNullArguments) {
    int64_t size = 0;
    for (const int32_t answer :
         {fLib.InterpretURL("C:/", nullptr, nullptr, nullptr), fLib.GetFileURL(nullptr, nullptr),
          fLib.GetNativeDirName(&fTemp, nullptr), fLib.MakeValidFileName(nullptr),
          fLib.SplitFileName(u"a", fText, nullptr), fLib.GetFreeSpace(&fVolume, &size, nullptr),
          fLib.GetVolumeInfo(&fVolume, nullptr), fLib.SwapFilesContents(&fFile, nullptr),
          fLib.GetChildInfo(&fTemp, nullptr, &fInfo, &fAnswer), fLib.SetFileInfo(&fFile, nullptr),
          fLib.GetFilePath(nullptr, fText), fLib.CreateAlias(&fTemp, u"a.lnk", nullptr),
          fFile.GetName(nullptr), fFile.IsEqual(&fFile, nullptr)}) {
        EXPECT_EQ(answer, 5002);
    }
    EXPECT_EQ(fAnswer + size, 0);
    Ask(5002, &G::OpenForRead, nullptr);
    Ask(5002, &G::CreateDir, &fTemp, nullptr);
    EXPECT_EQ(fLib.GetBootVolume(nullptr), nullptr);
}

TEST_F(CFileLibGlueTest, SpecsCompareWithoutCaseAndWithTheirOwnAlone) {
    int32_t status = 0;
    const std::unique_ptr<IFileSpec> copy(fFile.CreateCopy(&status));
    EXPECT_EQ(status, 5000);
    const CFileSpecGlue upper{u"c:\\TEMP\\A.TXT"};
    const CFileSpecGlue invalid{u""};
    const CForeignFile foreign;
    const struct {
        const IFileSpec* fOther;
        int32_t fStatus, fEqual;
    } rows[] = {{copy.get(), 5000, 1},
                {&upper, 5000, 1},
                {&fMissing, 5000, 0},
                {&foreign, 5003, 666},
                {&invalid, 5003, 666}};
    for (const auto& row : rows) {
        EXPECT_EQ(fFile.IsEqual(row.fOther, &fAnswer), row.fStatus);
        EXPECT_EQ(fAnswer, row.fEqual);
    }
    EXPECT_EQ(invalid.IsValid(), 0);
    EXPECT_EQ(invalid.GetName(fText), 5003);
    EXPECT_EQ(invalid.GetName(nullptr), 5003) << "validity comes before arguments";
    EXPECT_EQ(invalid.IsEqual(nullptr, nullptr), 5003);
    EXPECT_EQ(fLib.DeletePhysicalFile(&invalid), 5003);
    EXPECT_EQ(fLib.DeletePhysicalFile(&foreign), 5003);
    EXPECT_EQ(invalid.CreateCopy(&status), nullptr);
    EXPECT_EQ(status, 5003);
}

TEST_F(CFileLibGlueTest, URLsGoBothWays) {
    const auto interpret = [this](const char* url) {
        return fLib.InterpretURL(url, &fVolumeFound, &fDirFound, &fFileFound);
    };
    EXPECT_EQ(interpret("file://C:/Temp/a.txt"), 5000);
    const std::unique_ptr<IFileSpec> file(fFileFound);
    EXPECT_TRUE(file != nullptr && fDirFound == nullptr && fVolumeFound == nullptr);
    EXPECT_EQ(fLib.GetFileURL(file.get(), fURL), 5000);
    EXPECT_STREQ(fURL, "file://C:\\Temp\\a.txt");
    EXPECT_EQ(interpret("file://C:\\Temp\\"), 5000);
    const std::unique_ptr<IDirSpec> folder(fDirFound);
    EXPECT_TRUE(folder != nullptr && fFileFound == nullptr);
    EXPECT_EQ(fLib.GetDirURL(folder.get(), fURL), 5000);
    EXPECT_STREQ(fURL, "file://C:\\Temp\\");
    EXPECT_EQ(interpret("file://C:/none"), 5020);
    EXPECT_TRUE(fFileFound == nullptr && fDirFound == nullptr);

    // 7 + 3 bytes ahead of characters of three bytes each: 337 of them are whole.
    const CFileSpecGlue longPath{u"C:\\" + std::u16string(500, u'\u20AC')};
    EXPECT_EQ(fLib.GetFileURL(&longPath, fURL), 5000);
    EXPECT_EQ(std::string(fURL).size(), 10u + 337u * 3u);
}

TEST_F(CFileLibGlueTest, NamesComeBackWholeOrCut) {
    PutText(fText, u"  a:b.txt. ");
    ExpectText(fLib.MakeValidFileName(fText), u"a_b.txt");
    PutText(fText, u"NUL");
    ExpectText(fLib.MakeValidDirName(fText), u"NUL_");
    PutText(fText, u"a?");
    ExpectText(fLib.MakeValidVolumeName(fText), u"a_");
    const std::u16string longest(1023, u'x');
    const std::u16string first = longest.substr(1);
    const std::pair<std::u16string, std::u16string> stems[] = {
        {u"a.b.wav", u"a.b"}, {longest + u"xyz", longest}, {first + u"\U0001F3B5", first}};
    for (const auto& [name, stem] : stems) { // the pair would stand at 1022 and 1023
        char16_t extension[kFileLibTextUnits] = {};
        ExpectText(fLib.SplitFileName(name.c_str(), fText, extension), stem);
        EXPECT_EQ(std::u16string(extension), stem.size() == 3 ? u".wav" : u"");
    }
    ExpectText(fLib.GetNativeFileName(&fFile, fText), u"a.txt");
    ExpectText(fLib.GetNativeDirName(&fTemp, fText), u"Temp");
}

TEST_F(CFileLibGlueTest, AnUnfinishedOperationLeavesItsMarks) {
    EXPECT_EQ(fLib.GetChildInfo(&fTemp, u"none", &fInfo, &fAnswer), 5020);
    EXPECT_EQ(fAnswer, 666);
    EXPECT_EQ(fInfo.fSizeLow + fInfo.fCreationTime, 2 * 666);
    int64_t freeBytes = 0;
    int64_t totalBytes = 0;
    fOps.Script("ReadDiskSpace", {kError_AccessDenied});
    EXPECT_EQ(fLib.GetFreeSpace(&fVolume, &freeBytes, &totalBytes), 5012);
    EXPECT_EQ(freeBytes + totalBytes, 2 * 666);
    const auto info = std::make_unique<SVolumeInfo>();
    fOps.fDrives[u"C:\\"].fVolumeError = kError_TooManyOpenFiles;
    EXPECT_EQ(fLib.GetVolumeInfo(&fVolume, info.get()), 5021);
    EXPECT_EQ(std::u16string(info->fLabel), u"666");
    EXPECT_EQ(info->fFlags, 666u);
    const CFileSpecGlue unnameable{u"C:\\\xDC00"};
    EXPECT_EQ(fLib.GetFileURL(&unnameable, fURL), 5015);
    EXPECT_STREQ(fURL, "666");
}

TEST_F(CFileLibGlueTest, ChildrenAndParents) {
    for (const auto& [name, kind] :
         {std::pair(u"a.txt", 10), {u"Sub", 1}, {u"Sub\\..\\a.txt", 0}}) {
        ExpectAnswer(fLib.DoesChildFileExist(&fTemp, name, &fAnswer), kind / 10);
        ExpectAnswer(fLib.DoesChildDirExist(&fTemp, name, &fAnswer), kind % 10);
    }
    ExpectAnswer(fLib.GetChildInfo(&fTemp, u"Sub", &fInfo, &fAnswer), 1);
    EXPECT_EQ(fLib.GetFileInfo(&fFile, &fInfo), 5000);
    EXPECT_EQ(fInfo.fSizeLow, 4u);
    fInfo.fReadOnly = 1;
    EXPECT_EQ(fLib.SetFileInfo(&fFile, &fInfo), 5000);
    EXPECT_EQ(fLib.GetChildInfo(&fTemp, u"a.txt", &fInfo, &fAnswer), 5000);
    EXPECT_EQ(fInfo.fReadOnly, 1);
    EXPECT_EQ(fAnswer, 0);

    EXPECT_EQ(Path(&G::GetChildFile, &fTemp, u"a.txt"), u"C:\\Temp\\a.txt");
    Ask(5020, &G::GetChildDirectory, &fTemp, u"no");
    EXPECT_EQ(Path(&G::GetChildDirectory, &fTemp, u"Sub"), u"C:\\Temp\\Sub\\");
    EXPECT_EQ(Path(&G::GetChildDirectory, &fTemp, u"."), u"C:\\Temp\\");
    EXPECT_EQ(Path(&G::GetChildDirectory, &fTemp, u".."), u"C:\\");
    EXPECT_EQ(Path(&G::GetParentOfFile, &fFile), u"C:\\Temp\\");
    EXPECT_EQ(Path(&G::GetParentOfDir, &fTemp), u"C:\\");
    EXPECT_EQ(Path(&G::GetVolumeOfDir, &fTemp), u"C:\\");
    EXPECT_EQ(Path(&G::GetRootDir, &fVolume), u"C:\\");
    const auto made = Ask(5000, &G::CreateDir, &fTemp, u"New");
    ExpectText(fLib.GetDirPath(made.get(), fText), u"C:\\Temp\\New\\");
    EXPECT_EQ(fLib.GetDirInfo(made.get(), &fInfo), 5000);
    EXPECT_EQ(fLib.DeletePhysicalDirectory(made.get()), 5000);
    EXPECT_EQ(fLib.GetDirInfo(made.get(), &fInfo), 5020);
}

TEST_F(CFileLibGlueTest, AScannerEndsOnce) {
    const auto scanner = Ask(5000, &G::CreateDirScanner, &fTemp);
    for (const char16_t* name : {u"Sub", u"a.txt"}) {
        EXPECT_EQ(scanner->IsAtEnd(), 0);
        ExpectText(scanner->GetCurrent(fText, &fInfo, &fAnswer), name);
        EXPECT_EQ(fAnswer, name[0] == u'S' ? 1 : 0);
        EXPECT_EQ(scanner->Advance(), 5000);
    }
    EXPECT_EQ(scanner->IsAtEnd(), 1);
    fAnswer = 7;
    EXPECT_EQ(scanner->GetCurrent(fText, &fInfo, &fAnswer), 5004);
    EXPECT_EQ(fAnswer, 7);
    EXPECT_EQ(scanner->GetCurrent(nullptr, &fInfo, &fAnswer), 5002);
    EXPECT_EQ(scanner->Advance(), 5004);
}

TEST_F(CFileLibGlueTest, OpenFilesCheckTheirArgumentsFirst) {
    const auto file = Ask(5000, &G::OpenForRead, &fFile);
    IByteReader& reader = *file->GetByteReader();
    uint8_t bytes[8] = {};
    EXPECT_EQ(reader.Read(-1, 1, bytes), 5002);
    EXPECT_EQ(reader.Read(0, -1, bytes), 5002);
    EXPECT_EQ(reader.Read(0, 1, nullptr), 5002);
    EXPECT_EQ(fOps.CountCalls("Read"), 0);
    EXPECT_EQ(reader.Read(1, 3, bytes), 5000);
    EXPECT_EQ(bytes[2], 't');
    EXPECT_EQ(COpenReadFileGlue(nullptr).Read(-1, 0, nullptr), 5003);
    EXPECT_EQ(COpenReadWriteFileGlue(nullptr).Write(-1, 0, nullptr), 5003);
    EXPECT_EQ(CSafeOpenReadWriteFileGlue(nullptr).GetSize(nullptr), 5003);
    EXPECT_EQ(CSafeOpenReadWriteFileGlue(nullptr).Commit(), 5003);
    EXPECT_EQ(CDirScannerGlue(nullptr).GetCurrent(nullptr, nullptr, nullptr), 5003);
    EXPECT_EQ(CDirScannerGlue(nullptr).Advance(), 5003);

    const auto safe = Ask(5000, &G::OpenForSafeSave, &fTemp, u"a.txt");
    EXPECT_EQ(safe->GetByteWriter()->Write(0, -3, bytes), 5002);
    EXPECT_EQ(safe->Commit(), 5000);
    EXPECT_EQ(safe->Commit(), 5004);
    int64_t size = 0;
    EXPECT_EQ(safe->GetByteWriter()->GetSize(&size), 5004);
    EXPECT_EQ(size, 666);
    Ask(5020, &G::OpenForReadWrite, &fTemp, u"a?");
}

TEST_F(CFileLibGlueTest, FilesAreSwappedMadeAndDeleted) {
    fOps.AddFile(u"C:\\Temp\\b.txt", "other");
    const CFileSpecGlue other{u"C:\\Temp\\b.txt"};
    EXPECT_EQ(fLib.SwapFilesContents(&fFile, &other), 5000);
    EXPECT_EQ(fOps.TextOf(u"C:\\Temp\\a.txt"), "other");
    EXPECT_EQ(fLib.SwapFilesContents(&fFile, &fMissing), 5020);
    EXPECT_EQ(fLib.DeletePhysicalFile(&other), 5000);
    EXPECT_EQ(fLib.DeletePhysicalFile(&other), 5020);
    EXPECT_EQ(Path(&G::CreateUniqueFile, &fTemp, u"x.wav"), u"C:\\Temp\\tmp2.wav");
    EXPECT_EQ(Path(&G::CreateUniqueDir, &fTemp), u"C:\\Temp\\tmp1.tmp\\");
}

TEST_F(CFileLibGlueTest, AliasesLeadToFilesAndFolders) {
    EXPECT_EQ(fLib.CreateAlias(&fTemp, u"to a.lnk", &fFile), 5000);
    const CFileSpecGlue alias{u"C:\\Temp\\to a.lnk"};
    EXPECT_EQ(fLib.ResolvePossibleAlias(&alias, &fDirFound, &fFileFound), 5000);
    const std::unique_ptr<IFileSpec> file(fFileFound);
    EXPECT_EQ(fDirFound, nullptr);
    EXPECT_EQ(PathOf(file.get()), u"C:\\Temp\\a.txt");

    fOps.fLinks[u"C:\\Temp\\to a.lnk"].fTarget = u"C:\\Temp\\Sub";
    EXPECT_EQ(fLib.ResolvePossibleAlias(&alias, &fDirFound, &fFileFound), 5000);
    const std::unique_ptr<IDirSpec> folder(fDirFound);
    EXPECT_EQ(fFileFound, nullptr);
    EXPECT_EQ(PathOf(folder.get()), u"C:\\Temp\\Sub\\");
}

TEST_F(CFileLibGlueTest, VolumesAndWellKnownPlaces) {
    const auto volumes = Ask(5000, &G::GetVolumes);
    ASSERT_EQ(volumes->GetCount(), 1);
    EXPECT_EQ(PathOf(volumes->GetVolume(0)), u"C:\\");
    EXPECT_EQ(volumes->GetVolume(1), nullptr);
    EXPECT_EQ(volumes->GetVolume(-1), nullptr);
    ExpectAnswer(fLib.GetVolumeType(&fVolume, &fAnswer), 3);
    int64_t freeBytes = 0;
    int64_t totalBytes = 0;
    EXPECT_EQ(fLib.GetFreeSpace(&fVolume, &freeBytes, &totalBytes), 5000);
    EXPECT_LT(freeBytes, totalBytes);
    const auto info = std::make_unique<SVolumeInfo>();
    EXPECT_EQ(fLib.GetVolumeInfo(&fVolume, info.get()), 5000);
    EXPECT_EQ(std::u16string(info->fLabel), u"label");

    fOps.fSpecialFolders = {
        {0, u"C:\\Desk"}, {5, u"C:\\Docs"}, {26, u"C:\\Data"}, {35, u"C:\\All"}};
    EXPECT_EQ(Path(&G::GetBootVolume), u"C:\\");
    EXPECT_EQ(Path(&G::GetTemporaryDir), u"C:\\Temp\\");
    EXPECT_EQ(Path(&G::GetDesktopDir), u"C:\\Desk\\");
    EXPECT_EQ(Path(&G::GetDocumentsDir), u"C:\\Docs\\");
    EXPECT_EQ(Path(&G::GetSpecialDir, 35), u"C:\\All\\");
    EXPECT_EQ(Path(&G::GetProductDir, 5, u"M", u"P"), u"C:\\Docs\\M\\P\\");
    EXPECT_EQ(Path(&G::GetAppDataDir, u"M", u"", 0), u"C:\\Data\\M\\");
    EXPECT_EQ(Path(&G::GetAppDataDir, u"M", u"", 1), u"C:\\All\\M\\");
    EXPECT_EQ(Path(&G::GetExecutableFile), u"C:\\Program\\a.exe");
    // Native paths make specs of what need not be there.
    EXPECT_EQ(Path(&G::CreateFileSpec, u"C:\\no\\b"), u"C:\\no\\b");
    EXPECT_EQ(Path(&G::CreateDirSpec, u"C:\\no"), u"C:\\no\\");
    EXPECT_EQ(Path(&G::CreateVolumeSpec, u"Q:"), u"Q:\\");
    Ask(5020, &G::CreateFileSpec, u"C:\\a?");
    ExpectText(fLib.GetFilePath(&fFile, fText), u"C:\\Temp\\a.txt");
    ExpectText(fLib.GetVolumePath(&fVolume, fText), u"C:\\");
}

} // namespace NSFileLibInternals

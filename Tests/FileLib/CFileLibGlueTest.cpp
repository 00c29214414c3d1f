#include "FileLib/Source/CFileLibGlue.h"

#include "FileLib/Source/OpenFileGlue.h"
#include "FileLib/Source/SpecGlue.h"
#include "Tests/FileLib/CFakeFileOps.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace NSFileLibInternals {

namespace {

using namespace NSFileLib;

// An answer of the glue: an object or null, and the status beside it.
template <class TCall>
auto Ask(const TCall& call) {
    using TObject = std::remove_pointer_t<decltype(call(nullptr))>;
    struct SAnswer {
        std::unique_ptr<TObject> fObject;
        int32_t fStatus;
    };
    int32_t status = 0;
    std::unique_ptr<TObject> object(call(&status));
    return SAnswer{std::move(object), status};
}

template <class TCall>
int32_t StatusOf(const TCall& call) {
    return Ask(call).fStatus;
}

// The path of what a call gives; empty after a failure.
template <class TCall>
std::u16string PathFrom(const TCall& call) {
    const auto answer = Ask(call);
    EXPECT_EQ(answer.fStatus == 5000, answer.fObject != nullptr);
    return answer.fObject != nullptr ? PathOf(answer.fObject.get()) : std::u16string();
}

class CFileLibGlueTest : public testing::Test {
protected:
    CFileLibGlueTest() {
        fOps.AddFile(u"C:\\Temp\\a.txt", "text");
        fOps.AddFolder(u"C:\\Temp\\Sub");
    }

    CFakeFileOps fOps;
    CFileLibGlue fLib;
    const CVolumeSpecGlue fVolume{u"C:\\"};
    const CDirSpecGlue fTemp{u"C:\\Temp\\"};
    const CFileSpecGlue fFile{u"C:\\Temp\\a.txt"};
    const CFileSpecGlue fMissing{u"C:\\Temp\\none"};
    char16_t fText[kFileLibTextUnits] = {};
    NSFileLib::SFileInfo fInfo = {};
};

// A spec of another making.
class CForeignFile : public IFileSpec {
public:
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
    int32_t number = 0;
    int64_t size = 0;
    const std::vector<std::function<int32_t()>> calls{
        [&] { return fLib.InterpretURL("C:/", nullptr, nullptr, nullptr); },
        [&] { return fLib.GetFileURL(nullptr, nullptr); },
        [&] { return fLib.GetNativeDirName(&fTemp, nullptr); },
        [&] { return fLib.MakeValidFileName(nullptr); },
        [&] { return fLib.SplitFileName(u"a", fText, nullptr); },
        [&] { return fLib.GetFreeSpace(&fVolume, &size, nullptr); },
        [&] { return fLib.GetVolumeInfo(&fVolume, nullptr); },
        [&] { return fLib.GetChildInfo(&fTemp, nullptr, &fInfo, &number); },
        [&] { return fLib.SwapFilesContents(&fFile, nullptr); },
        [&] { return fLib.SetFileInfo(&fFile, nullptr); },
        [&] { return fLib.GetFilePath(nullptr, fText); },
        [&] { return fLib.CreateAlias(&fTemp, u"a.lnk", nullptr); },
        [&] { return fFile.GetName(nullptr); },
        [&] { return fFile.IsEqual(&fFile, nullptr); },
        [&] { return StatusOf([&](auto s) { return fLib.OpenForRead(nullptr, s); }); },
        [&] { return StatusOf([&](auto s) { return fLib.CreateDir(&fTemp, nullptr, s); }); },
    };
    for (size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(calls[i](), 5002) << i;
    }
    EXPECT_EQ(number, 0);
    EXPECT_EQ(fLib.GetBootVolume(nullptr), nullptr);
}

TEST_F(CFileLibGlueTest, RefusesObjectsThatAreNotItsOwn) {
    const CFileSpecGlue invalid{u""};
    const CForeignFile foreign;
    EXPECT_EQ(invalid.IsValid(), 0);
    EXPECT_EQ(invalid.GetName(fText), 5003);
    EXPECT_EQ(fLib.DeletePhysicalFile(&invalid), 5003);
    EXPECT_EQ(fLib.DeletePhysicalFile(&foreign), 5003);
    EXPECT_EQ(StatusOf([&](auto s) { return invalid.CreateCopy(s); }), 5003);
    int32_t equal = 0;
    EXPECT_EQ(fFile.IsEqual(&foreign, &equal), 5003);
    EXPECT_EQ(equal, 666);
}

TEST_F(CFileLibGlueTest, SpecsCopyAndCompareWithoutCase) {
    const auto copy = Ask([&](auto s) { return fFile.CreateCopy(s); });
    ASSERT_EQ(copy.fStatus, 5000);
    int32_t equal = 0;
    EXPECT_EQ(fFile.IsEqual(copy.fObject.get(), &equal), 5000);
    EXPECT_EQ(equal, 1);
    const CFileSpecGlue upper{u"c:\\TEMP\\A.TXT"};
    EXPECT_EQ(fFile.IsEqual(&upper, &equal), 5000);
    EXPECT_EQ(equal, 1);
    EXPECT_EQ(fFile.IsEqual(&fMissing, &equal), 5000);
    EXPECT_EQ(equal, 0);
}

TEST_F(CFileLibGlueTest, URLsGoBothWays) {
    IVolumeSpec* volume = nullptr;
    IDirSpec* folder = nullptr;
    IFileSpec* file = nullptr;
    EXPECT_EQ(fLib.InterpretURL("file://C:/Temp/a.txt", &volume, &folder, &file), 5000);
    const std::unique_ptr<IFileSpec> fileOwner(file);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(volume, nullptr);
    EXPECT_EQ(folder, nullptr);
    char url[kFileLibTextUnits] = {};
    EXPECT_EQ(fLib.GetFileURL(file, url), 5000);
    EXPECT_STREQ(url, "file://C:\\Temp\\a.txt");

    EXPECT_EQ(fLib.InterpretURL("file://C:\\Temp\\", &volume, &folder, &file), 5000);
    const std::unique_ptr<IDirSpec> folderOwner(folder);
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(fLib.GetDirURL(folder, url), 5000);
    EXPECT_STREQ(url, "file://C:\\Temp\\");

    EXPECT_EQ(fLib.InterpretURL("file://C:/none", &volume, &folder, &file), 5020);
    EXPECT_EQ(file, nullptr);

    // 7 + 3 bytes ahead of characters of three bytes each: 337 of them are whole.
    const CFileSpecGlue longPath{u"C:\\" + std::u16string(500, u'\u20AC')};
    EXPECT_EQ(fLib.GetFileURL(&longPath, url), 5000);
    EXPECT_EQ(std::string(url).size(), 10u + 337u * 3u);
}

TEST_F(CFileLibGlueTest, NamesComeBackWholeOrCut) {
    const auto makeValid = [this](const std::u16string& wanted,
                                  int32_t (CFileLibGlue::*make)(char16_t*)) {
        PutText(fText, wanted);
        EXPECT_EQ((fLib.*make)(fText), 5000);
        return std::u16string(fText);
    };
    EXPECT_EQ(makeValid(u"  a:b.txt. ", &CFileLibGlue::MakeValidFileName), u"a_b.txt");
    EXPECT_EQ(makeValid(u"NUL", &CFileLibGlue::MakeValidDirName), u"NUL_");
    EXPECT_EQ(makeValid(u"a?", &CFileLibGlue::MakeValidVolumeName), u"a_");

    char16_t extension[kFileLibTextUnits] = {};
    EXPECT_EQ(fLib.SplitFileName(u"a.b.wav", fText, extension), 5000);
    EXPECT_EQ(std::u16string(fText), u"a.b");
    EXPECT_EQ(std::u16string(extension), u".wav");
    EXPECT_EQ(fLib.SplitFileName(std::u16string(1500, u'x').c_str(), fText, extension), 5000);
    EXPECT_EQ(std::u16string(fText), std::u16string(1023, u'x'));
    // The pair would stand at 1022 and 1023.
    const std::u16string pair = std::u16string(1022, u'x') + u"\U0001F3B5";
    EXPECT_EQ(fLib.SplitFileName(pair.c_str(), fText, extension), 5000);
    EXPECT_EQ(std::u16string(fText), std::u16string(1022, u'x'));

    EXPECT_EQ(fLib.GetNativeFileName(&fFile, fText), 5000);
    EXPECT_EQ(std::u16string(fText), u"a.txt");
    EXPECT_EQ(fLib.GetNativeDirName(&fTemp, fText), 5000);
    EXPECT_EQ(std::u16string(fText), u"Temp");
}

TEST_F(CFileLibGlueTest, AnUnfinishedOperationLeavesItsMarks) {
    int32_t number = 0;
    EXPECT_EQ(fLib.GetChildInfo(&fTemp, u"none", &fInfo, &number), 5020);
    EXPECT_EQ(number, 666);
    EXPECT_EQ(fInfo.fSizeLow, 666u);
    EXPECT_EQ(fInfo.fCreationTime, 666);
    int64_t freeBytes = 0;
    int64_t totalBytes = 0;
    fOps.Script("ReadDiskSpace", {kError_AccessDenied});
    EXPECT_EQ(fLib.GetFreeSpace(&fVolume, &freeBytes, &totalBytes), 5012);
    EXPECT_EQ(freeBytes, 666);
    EXPECT_EQ(totalBytes, 666);
    const auto info = std::make_unique<NSFileLib::SVolumeInfo>();
    fOps.fDrives[u"C:\\"].fVolumeError = kError_TooManyOpenFiles;
    EXPECT_EQ(fLib.GetVolumeInfo(&fVolume, info.get()), 5021);
    EXPECT_EQ(std::u16string(info->fLabel), u"666");
    EXPECT_EQ(info->fFlags, 666u);
    const CFileSpecGlue unnameable{u"C:\\\xDC00"};
    char url[kFileLibTextUnits] = {};
    EXPECT_EQ(fLib.GetFileURL(&unnameable, url), 5015);
    EXPECT_STREQ(url, "666");
}

TEST_F(CFileLibGlueTest, ChildrenAndParents) {
    int32_t exists = 0;
    EXPECT_EQ(fLib.DoesChildFileExist(&fTemp, u"a.txt", &exists), 5000);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(fLib.DoesChildDirExist(&fTemp, u"a.txt", &exists), 5000);
    EXPECT_EQ(exists, 0);
    EXPECT_EQ(fLib.GetChildInfo(&fTemp, u"Sub", &fInfo, &exists), 5000);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(fLib.GetFileInfo(&fFile, &fInfo), 5000);
    EXPECT_EQ(fInfo.fSizeLow, 4u);
    fInfo.fReadOnly = 1;
    EXPECT_EQ(fLib.SetFileInfo(&fFile, &fInfo), 5000);
    EXPECT_EQ(fLib.GetChildInfo(&fTemp, u"a.txt", &fInfo, &exists), 5000);
    EXPECT_EQ(fInfo.fReadOnly, 1);
    EXPECT_EQ(exists, 0);

    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetChildFile(&fTemp, u"a.txt", s); }),
              u"C:\\Temp\\a.txt");
    EXPECT_EQ(StatusOf([&](auto s) { return fLib.GetChildDirectory(&fTemp, u"no", s); }), 5020);
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetParentOfFile(&fFile, s); }), u"C:\\Temp\\");
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetParentOfDir(&fTemp, s); }), u"C:\\");
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetVolumeOfDir(&fTemp, s); }), u"C:\\");
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetRootDir(&fVolume, s); }), u"C:\\");
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.CreateDir(&fTemp, u"New", s); }),
              u"C:\\Temp\\New\\");
    const CDirSpecGlue made{u"C:\\Temp\\New\\"};
    EXPECT_EQ(fLib.GetDirInfo(&made, &fInfo), 5000);
    EXPECT_EQ(fLib.DeletePhysicalDirectory(&made), 5000);
    EXPECT_EQ(fLib.GetDirInfo(&made, &fInfo), 5020);
}

TEST_F(CFileLibGlueTest, AScannerEndsOnce) {
    const auto answer = Ask([&](auto s) { return fLib.CreateDirScanner(&fTemp, s); });
    ASSERT_EQ(answer.fStatus, 5000);
    IDirScanner& scanner = *answer.fObject;
    std::vector<std::u16string> names;
    while (scanner.IsAtEnd() == 0 && names.size() < 3) {
        int32_t isFolder = 0;
        ASSERT_EQ(scanner.GetCurrent(fText, &fInfo, &isFolder), 5000);
        EXPECT_EQ(isFolder, std::u16string(fText) == u"Sub" ? 1 : 0);
        names.emplace_back(fText);
        ASSERT_EQ(scanner.Advance(), 5000);
    }
    EXPECT_EQ(names.size(), 2u);
    int32_t isFolder = 7;
    EXPECT_EQ(scanner.GetCurrent(fText, &fInfo, &isFolder), 5004);
    EXPECT_EQ(isFolder, 7);
    EXPECT_EQ(scanner.GetCurrent(nullptr, &fInfo, &isFolder), 5002);
    EXPECT_EQ(scanner.Advance(), 5004);
}

TEST_F(CFileLibGlueTest, OpenFilesCheckTheirArgumentsFirst) {
    const auto answer = Ask([&](auto s) { return fLib.OpenForRead(&fFile, s); });
    ASSERT_EQ(answer.fStatus, 5000);
    IByteReader& reader = *answer.fObject->GetByteReader();
    uint8_t bytes[8] = {};
    EXPECT_EQ(reader.Read(-1, 1, bytes), 5002);
    EXPECT_EQ(reader.Read(0, -1, bytes), 5002);
    EXPECT_EQ(reader.Read(0, 1, nullptr), 5002);
    EXPECT_EQ(fOps.CountCalls("Read"), 0);
    EXPECT_EQ(reader.Read(1, 3, bytes), 5000);
    EXPECT_EQ(bytes[2], 't');
    EXPECT_EQ(reader.Read(2, 3, bytes), 5013);
    int64_t size = 0;
    EXPECT_EQ(answer.fObject->GetSize(&size), 5000);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(COpenReadFileGlue(nullptr).Read(0, 0, bytes), 5003);
}

TEST_F(CFileLibGlueTest, APlainOpenEmptiesAndASafeOneWaits) {
    const uint8_t bytes[] = {'n', 'e', 'w'};
    const auto safe = Ask([&](auto s) { return fLib.OpenForSafeSave(&fTemp, u"a.txt", s); });
    ASSERT_EQ(safe.fStatus, 5000);
    EXPECT_EQ(safe.fObject->GetByteWriter()->Write(0, 3, bytes), 5000);
    EXPECT_EQ(safe.fObject->GetByteWriter()->Write(0, -3, bytes), 5002);
    EXPECT_EQ(fOps.TextOf(u"C:\\Temp\\a.txt"), "text");
    EXPECT_EQ(safe.fObject->Commit(), 5000);
    EXPECT_EQ(fOps.TextOf(u"C:\\Temp\\a.txt"), "new");
    EXPECT_EQ(safe.fObject->Commit(), 5004);
    int64_t size = 0;
    EXPECT_EQ(safe.fObject->GetByteWriter()->GetSize(&size), 5004);
    EXPECT_EQ(size, 666);

    const auto plain = Ask([&](auto s) { return fLib.OpenForReadWrite(&fTemp, u"a.txt", s); });
    ASSERT_EQ(plain.fStatus, 5000);
    EXPECT_EQ(fOps.TextOf(u"C:\\Temp\\a.txt"), "");
    EXPECT_EQ(plain.fObject->GetByteWriter()->Write(0, 3, bytes), 5000);
    uint8_t back[3] = {};
    EXPECT_EQ(plain.fObject->GetByteReader()->Read(0, 3, back), 5000);
    EXPECT_EQ(back[0], 'n');
    EXPECT_EQ(StatusOf([&](auto s) { return fLib.OpenForReadWrite(&fTemp, u"a?", s); }), 5020);

    fOps.fFiles[u"C:\\Temp\\a.txt"]->fAttributes |= kAttribute_ReadOnly;
    EXPECT_EQ(StatusOf([&](auto s) { return fLib.OpenForSafeSave(&fTemp, u"a.txt", s); }), 5010);
}

TEST_F(CFileLibGlueTest, FilesAreSwappedMadeAndDeleted) {
    fOps.AddFile(u"C:\\Temp\\b.txt", "other");
    const CFileSpecGlue other{u"C:\\Temp\\b.txt"};
    EXPECT_EQ(fLib.SwapFilesContents(&fFile, &other), 5000);
    EXPECT_EQ(fOps.TextOf(u"C:\\Temp\\a.txt"), "other");
    EXPECT_EQ(fLib.DeletePhysicalFile(&other), 5000);
    EXPECT_EQ(fLib.DeletePhysicalFile(&other), 5020);
    EXPECT_TRUE(PathFrom([&](auto s) {
                    return fLib.CreateUniqueFile(&fTemp, u"x.wav", s);
                }).ends_with(u".wav"));
    EXPECT_TRUE(PathFrom([&](auto s) {
                    return fLib.CreateUniqueDir(&fTemp, s);
                }).starts_with(u"C:\\Temp\\"));
}

TEST_F(CFileLibGlueTest, AliasesLeadToFilesAndFolders) {
    EXPECT_EQ(fLib.CreateAlias(&fTemp, u"to a.lnk", &fFile), 5000);
    const CFileSpecGlue alias{u"C:\\Temp\\to a.lnk"};
    IDirSpec* folder = nullptr;
    IFileSpec* file = nullptr;
    EXPECT_EQ(fLib.ResolvePossibleAlias(&alias, &folder, &file), 5000);
    const std::unique_ptr<IFileSpec> fileOwner(file);
    EXPECT_EQ(folder, nullptr);
    EXPECT_EQ(PathOf(file), u"C:\\Temp\\a.txt");

    fOps.fLinks[u"C:\\Temp\\to a.lnk"].fTarget = u"C:\\Temp\\Sub";
    EXPECT_EQ(fLib.ResolvePossibleAlias(&alias, &folder, &file), 5000);
    const std::unique_ptr<IDirSpec> folderOwner(folder);
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(PathOf(folder), u"C:\\Temp\\Sub\\");

    EXPECT_EQ(fLib.CreateAlias(&fTemp, u"b.lnk", &fMissing), 5020);
}

TEST_F(CFileLibGlueTest, VolumesAndWellKnownPlaces) {
    const auto volumes = Ask([&](auto s) { return fLib.GetVolumes(s); });
    ASSERT_EQ(volumes.fStatus, 5000);
    ASSERT_EQ(volumes.fObject->GetCount(), 1);
    EXPECT_EQ(PathOf(volumes.fObject->GetVolume(0)), u"C:\\");
    EXPECT_EQ(volumes.fObject->GetVolume(1), nullptr);
    EXPECT_EQ(volumes.fObject->GetVolume(-1), nullptr);
    int32_t type = 0;
    EXPECT_EQ(fLib.GetVolumeType(&fVolume, &type), 5000);
    EXPECT_EQ(type, 3);
    const auto info = std::make_unique<NSFileLib::SVolumeInfo>();
    EXPECT_EQ(fLib.GetVolumeInfo(&fVolume, info.get()), 5000);
    EXPECT_NE(std::u16string(info->fLabel), u"666");

    fOps.fSpecialFolders = {
        {0, u"C:\\Desk"}, {5, u"C:\\Docs"}, {26, u"C:\\Data"}, {35, u"C:\\All"}};
    for (const auto& [number, path] : fOps.fSpecialFolders) {
        fOps.AddFolder(path);
    }
    const std::vector<std::pair<std::function<IDirSpec*(int32_t*)>, const char16_t*>> places{
        {[&](int32_t* s) { return fLib.GetTemporaryDir(s); }, u"C:\\Temp\\"},
        {[&](int32_t* s) { return fLib.GetDesktopDir(s); }, u"C:\\Desk\\"},
        {[&](int32_t* s) { return fLib.GetDocumentsDir(s); }, u"C:\\Docs\\"},
        {[&](int32_t* s) { return fLib.GetSpecialDir(5, s); }, u"C:\\Docs\\"},
        {[&](int32_t* s) { return fLib.GetProductDir(5, u"M", u"P", s); }, u"C:\\Docs\\M\\P\\"},
        {[&](int32_t* s) { return fLib.GetAppDataDir(u"M", u"", 0, s); }, u"C:\\Data\\M\\"},
        {[&](int32_t* s) { return fLib.GetAppDataDir(u"M", u"", 1, s); }, u"C:\\All\\M\\"},
    };
    for (const auto& [call, path] : places) {
        EXPECT_EQ(PathFrom(call), path);
    }
    EXPECT_EQ(StatusOf([&](auto s) { return fLib.GetSpecialDir(99, s); }), 5020);
    EXPECT_EQ(PathFrom([&](auto s) { return fLib.GetExecutableFile(s); }), u"C:\\Program\\a.exe");
}

TEST_F(CFileLibGlueTest, NativePathsMakeSpecsOfWhatNeedNotBeThere) {
    IFileLibWinExtensions& native = *fLib.GetWinExtensions();
    EXPECT_EQ(PathFrom([&](auto s) { return native.CreateFileSpec(u"C:\\no\\b", s); }),
              u"C:\\no\\b");
    EXPECT_EQ(PathFrom([&](auto s) { return native.CreateDirSpec(u"C:\\no", s); }), u"C:\\no\\");
    EXPECT_EQ(PathFrom([&](auto s) { return native.CreateVolumeSpec(u"Q:", s); }), u"Q:\\");
    EXPECT_EQ(StatusOf([&](auto s) { return native.CreateFileSpec(u"C:\\a?", s); }), 5020);
    EXPECT_EQ(native.GetFilePath(&fFile, fText), 5000);
    EXPECT_EQ(std::u16string(fText), u"C:\\Temp\\a.txt");
    EXPECT_EQ(native.GetDirPath(&fTemp, fText), 5000);
    EXPECT_EQ(std::u16string(fText), u"C:\\Temp\\");
    EXPECT_EQ(native.GetVolumePath(&fVolume, fText), 5000);
    EXPECT_EQ(std::u16string(fText), u"C:\\");
}

} // namespace NSFileLibInternals

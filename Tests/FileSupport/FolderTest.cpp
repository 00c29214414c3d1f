#include "Failure/Classes/XClasses.h"
#include "PorterPackage/FileSupport/COpenReadFileBridge.h"
#include "PorterPackage/FileSupport/CRobustFileSpec.h"
#include "PorterPackage/FileSupport/FileAssociation.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"
#include "PorterPackage/FileSupport/MakerFolders.h"
#include "PorterPackage/FileSupport/WalkFolder.h"
#include "Tests/FileLib/FileLibTest.h"

#include <map>

namespace NSFileLibSupport {

namespace {

using namespace NSLichen;
using namespace NSFileLibInternals;

class Folders : public testing::Test {
protected:
    Folders() {
        fOps.AddFile(u"C:\\Temp\\a.txt", "text");
        fOps.AddFolder(u"C:\\Temp\\Sub");
        fOps.AddFile(u"C:\\Temp\\Sub\\b.txt", "deep");
    }
    ~Folders() override { NSFileLib::ReleaseFileLibSingleton(); }

    CFakeFileOps fOps;
};

} // namespace

TEST_F(Folders, SpecsLeadUpAndDown) {
    const FileHandle file = MakeFileSpec(u"C:\\Temp\\Sub\\b.txt");
    EXPECT_EQ(GetName(*file), u"b.txt");
    const DirHandle folder = GetParent(file);
    EXPECT_EQ(GetName(*folder), u"Sub");
    EXPECT_EQ(GetName(*GetParent(folder)), u"Temp");
    EXPECT_EQ(GetName(*GetChildFile(folder, u"b.txt")), u"b.txt");
    EXPECT_EQ(GetName(*GetChildFolder(folder, u"..")), u"Temp");
    EXPECT_THROW(GetChildFile(folder, u"none"), XNotFound);
    EXPECT_THROW(MakeFileSpec(u"no path"), XNotFound);
    EXPECT_EQ(MakeVolumeSpec(u"C:")->IsValid(), 1);
}

TEST_F(Folders, ARobustSpecOutlivesItsFile) {
    const CRobustFileSpec stored("file://C:\\gone", u"kept name");
    EXPECT_EQ(stored.GetName(), u"kept name");
    EXPECT_EQ(fOps.CountCalls("ReadAttributes"), 0);
    for (const char* url : {"file://C:\\gone", "file://C:\\Temp\\"}) {
        EXPECT_EQ(kNotFound([&] { CRobustFileSpec(url).GetName(); }), "File not found.");
    }
    EXPECT_EQ(CRobustFileSpec("file://C:/Temp/a.txt").GetName(), u"a.txt");

    const CRobustFileSpec spec(MakeFileSpec(u"C:\\Temp\\a.txt"));
    EXPECT_EQ(spec.GetURL(), "file://C:\\Temp\\a.txt");
    EXPECT_TRUE(spec.HasStoredName());
    EXPECT_EQ(OpenRobust(spec)->GetLength(), 4);
    fOps.fFiles.erase(u"C:\\Temp\\a.txt");
    EXPECT_EQ(spec.GetName(), u"a.txt");
    EXPECT_THROW(OpenRobust(spec), XNotFound);

    fOps.fLongestPath = 5000;
    std::u16string deep = u"C:";
    while (deep.size() < 1020) {
        deep += u"\\" + std::u16string(99, u'x');
    }
    EXPECT_THROW(CRobustFileSpec(MakeFileSpec(deep)), XOutOfSpace);
}

TEST_F(Folders, AWalkFollowsAliases) {
    for (const auto& [link, target] : {std::pair(u"file.lnk", u"C:\\Temp\\Sub\\b.txt"),
                                       {u"folder.LNK", u"C:\\Temp\\Sub"},
                                       {u"lost.lnk", u"C:\\Temp\\gone"},
                                       {u"a plain file.lnk", u""}}) {
        fOps.AddFile(std::u16string(u"C:\\Temp\\") + link, "link");
        fOps.fLinks[std::u16string(u"C:\\Temp\\") + link].fTarget = target;
    }
    fOps.fLinks[u"C:\\Temp\\a plain file.lnk"] = {kOLE_BadFormat, ELinkStep::kLoad, u""};
    fOps.AddFile(u"C:\\Temp\\lnk", "no alias");
    std::map<std::u16string, std::u16string> seen;
    WalkFolder(MakeDirSpec(u"C:\\Temp\\"), [&](const SFolderEntry& entry) {
        ASSERT_NE(entry.fFile == nullptr, entry.fFolder == nullptr);
        seen[entry.fName] = (entry.fIsAlias ? u"alias of " : u"") +
                            (entry.fFile != nullptr ? u"file " + GetName(*entry.fFile)
                                                    : u"folder " + GetName(*entry.fFolder));
    });
    const std::map<std::u16string, std::u16string> expected{{u"a.txt", u"file a.txt"},
                                                            {u"Sub", u"folder Sub"},
                                                            {u"file.lnk", u"alias of file b.txt"},
                                                            {u"folder.LNK", u"alias of folder Sub"},
                                                            {u"lnk", u"file lnk"}};
    EXPECT_EQ(seen, expected);
    EXPECT_THROW(WalkFolder(MakeDirSpec(u"C:\\Temp\\"),
                            [](const SFolderEntry&) { throw std::length_error("stop"); }),
                 std::length_error);
}

TEST_F(Folders, TheMakersFoldersAreMadeWhenMissing) {
    fOps.fSpecialFolders = {{5, u"C:\\Docs"}, {26, u"C:\\Data"}};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(GetName(*GetOrCreateMusicDocumentsDirSpec()), u"Halyard Software");
        EXPECT_EQ(GetName(*GetCachedDataFolderDirSpec()), u"Halyard Software");
    }
    EXPECT_TRUE(fOps.HasFile(u"C:\\Docs\\Halyard Software"));
    EXPECT_TRUE(fOps.HasFile(u"C:\\Data\\Halyard Software"));
    fOps.fSpecialFolders.clear();
    EXPECT_THROW(GetOrCreateMusicDocumentsDirSpec(), XNotFound);
}

TEST(FileAssociation, AnUnknownClassHasNoProgram) {
    EXPECT_EQ(kNotFound([] { FindAssociatedProgram(u".no such extension"); }),
              "AssocQueryStringByKey failed");
}

} // namespace NSFileLibSupport

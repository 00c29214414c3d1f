#include "FileLib/Rules/PathRules.h"

#include "Tests/FileLib/FileLibTest.h"

namespace NSFileLibInternals {

namespace {

std::u16string Repeat(char16_t unit, size_t count) {
    return std::u16string(count, unit);
}

TEST(PathRules, NamesAreValidOrNot) {
    for (const char16_t* name :
         {u"a", u"a\x1A!", u" a", u".a", u"conn", u"con .txt", u"com0", u"a\x7F"}) {
        EXPECT_TRUE(IsValidFileName(name)) << testing::PrintToString(name);
    }
    for (const char16_t* name : {u"", u"a.", u"a ", u"a\v", u"a?b", u"a\x19!", u".", u"..",
                                 u"Con.txt", u"con.a.b", u"COM9", u"$mft.x"}) {
        EXPECT_FALSE(IsValidFileName(name)) << testing::PrintToString(name);
    }
    EXPECT_TRUE(IsValidFileName(Repeat(u'a', 256)));
    EXPECT_FALSE(IsValidFileName(Repeat(u'a', 257)));
    int forbidden = 0;
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        forbidden += IsForbiddenCharacter(unit) ? 1 : 0;
    }
    EXPECT_EQ(forbidden, 39);
}

TEST(PathRules, PathsAreValidOrNot) {
    const std::u16string longest = u"C:\\" + Repeat(u'a', 200) + u'\\' + Repeat(u'b', 56);
    const std::vector<std::pair<std::string, std::vector<std::u16string>>> kPathsByKind = {
        {"v", {u"C:"}},
        {"pv", {u"C:\\", u"z:\\", u"\\\\s\\t\\"}},
        {"pfv", {u"\\\\s\\t"}},
        {"p", {u"C:\\a\\"}},
        {"pf", {u"C:\\a", u"C:\\a\\b.txt", longest, u"\\\\s\\t\\a\\b"}},
        {"",
         {u"", u"1:\\", u"C:\\a\\\\b", u"C:\\a.\\b", u"C:\\nul\\b", u"C:a", u"C:/a", u"\\a",
          u"\\\\s", u"\\\\s\\", u"\\\\\\s\\t", u"\\\\s\\t\\\\b", u"\\\\s\\t:\\b", u"\\\\?\\C:\\a",
          longest + u'b'}},
    };
    for (const auto& [kinds, paths] : kPathsByKind) { // a path at all, one of a file, of a volume
        for (const std::u16string& path : paths) {
            const std::string found = std::string(WinIsValidPath(path) ? "p" : "") +
                                      (WinIsValidFilePath(path) ? "f" : "") +
                                      (WinIsValidVolumePath(path) ? "v" : "");
            EXPECT_EQ(found, kinds) << testing::PrintToString(path);
        }
    }
}

TEST(PathRules, TheLongestNativePathIsThePlatformsOwn) {
    CFakeFileOps ops;
    const std::u16string path = u"C:\\" + Repeat(u'a', 200) + u'\\' + Repeat(u'b', 200);
    EXPECT_FALSE(IsNativePath(path));
    ops.fLongestPath = kNoPathLimit;
    EXPECT_TRUE(IsNativePath(path));
    EXPECT_FALSE(IsNativePath(path + u"\\a?"));
    EXPECT_FALSE(IsNativePath(u"C:"));
    EXPECT_FALSE(IsNativeFilePath(path + u'\\'));
}

TEST(NameMaking, MakesValidNames) {
    const struct {
        std::u16string fWanted;
        size_t fLimit;
        std::u16string fMade;
    } kRows[] = {
        {u"", 256, u""},
        {u"  a:b.txt. ", 256, u"a_b.txt"},
        {u"NUL", 256, u"NUL_"},
        {u"NUL", 3, u"NUL_"}, // the "_" comes behind the cut
        {u"lpt1.dat", 256, u"lpt1_.dat"},
        {u"con.txt", 256, u"con_.txt"},
        {u"con .txt", 256, u"con_.txt"},
        {u". . ", 256, u""},
        {u"\t<a>\\/|\"*?\n", 256, u"_a_______"},
        {u"ab.cd", 4, u"a.cd"},
        {u"a bcdef", 2, u"a "}, // so may a blank
        {Repeat(u'a', 300) + u".wav", 1000, Repeat(u'a', 252) + u".wav"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(MakeValidFileName(row.fWanted, row.fLimit), row.fMade);
    }
    EXPECT_EQ(MakeValidFolderName(u"a<b."), u"a_b");
    EXPECT_EQ(MakeValidVolumeName(u" aux"), u"aux_");
}

TEST(NameMaking, CutsTheStemAndKeepsTheExtension) {
    EXPECT_EQ(TruncateFileName(u"ab.wav", 6), u"ab.wav");
    EXPECT_EQ(TruncateFileName(u"ab.wav", 5), u"a.wav");
    const std::u16string pair = u"a\xD834\xDD1E"
                                u"b.wav";
    EXPECT_EQ(TruncateFileName(pair, 7), u"a\xD834\xDD1E.wav");
    EXPECT_EQ(TruncateFileName(pair, 6), u"a.wav") << "half a pair must not stay";
    EXPECT_EQ(TruncateFileName(pair.substr(1), 5), u"\xD834.wav") << "unless nothing else would";
    for (const size_t limit : {size_t{4}, size_t{3}, size_t{0}}) {
        EXPECT_EQ(TextRaised<NSLichen::XOutOfSpace>([&] { TruncateFileName(u"ab.wav", limit); }),
                  "not enough room for truncated file name");
    }
}

TEST(NameMaking, TakesNamesAndPathsApart) {
    std::u16string first;
    std::u16string second;
    const std::u16string longExtension = u"." + Repeat(u'x', 255);
    const std::vector<std::pair<std::u16string, std::u16string>> kStemsAndExtensions = {
        {u"a.b", u".c"}, {u"a", u""},           {u"a", u"."},
        {u"", u".a"},    {u"a", longExtension}, {u"a" + longExtension + u'x', u""}};
    for (const auto& [stem, extension] : kStemsAndExtensions) {
        SplitFileName(stem + extension, first, second);
        EXPECT_EQ(first, stem);
        EXPECT_EQ(second, extension);
    }
    for (const char16_t* path : {u"C:\\a\\|b", u"|b", u"C:\\a\\|"}) {
        std::u16string whole = path;
        SplitPath(whole.erase(whole.find(u'|'), 1), first, second);
        EXPECT_EQ(first.append(1, u'|').append(second), path);
    }
    const struct {
        std::u16string fPath, fParent, fVolume, fName;
    } kPaths[] = {
        {u"C:\\a", u"C:\\", u"C:\\", u"a"},
        {u"C:\\a\\b\\", u"C:\\a\\", u"C:\\", u"b"},
        {u"\\\\s\\t\\a\\b", u"\\\\s\\t\\a\\", u"\\\\s\\t\\", u"b"},
        {u"\\\\s\\t\\a\\", u"\\\\s\\t\\", u"\\\\s\\t\\", u"a"},
    };
    for (const auto& row : kPaths) {
        EXPECT_EQ(GetParentPath(row.fPath), row.fParent);
        EXPECT_EQ(GetVolumeOfPath(row.fPath), row.fVolume);
        EXPECT_EQ(GetNameOfPath(row.fPath), row.fName);
    }
    for (const char16_t* root : {u"C:\\", u"\\\\s\\t\\", u"\\\\s\\t"}) {
        EXPECT_THROW(GetParentPath(root), NSLichen::XNotFound);
    }
    EXPECT_EQ(StripLongPathPrefix(u"\\\\?\\C:\\a"), u"C:\\a");
    EXPECT_EQ(StripLongPathPrefix(u"\\\\?\\UNC\\s\\t\\a"), u"\\\\s\\t\\a");
    EXPECT_EQ(StripLongPathPrefix(u"\\\\s\\t\\a"), u"\\\\s\\t\\a");
}

} // namespace

} // namespace NSFileLibInternals

#include "FileLib/Source/Win/PathRules.h"

#include "Failure/XClasses.h"
#include "FileLib/Source/Win/NameMaking.h"
#include "Tests/FileLib/CFakeFileOps.h"
#include "Tests/FileLib/TextRaised.h"

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

std::u16string Repeat(char16_t unit, size_t count) {
    return std::u16string(count, unit);
}

TEST(PathRules, NamesAreValidOrNot) {
    for (const std::u16string& name :
         {std::u16string(u"a"), std::u16string(u"a\x1A!"), std::u16string(u" a"),
          std::u16string(u".a"), std::u16string(u"conn"), std::u16string(u"con .txt"),
          std::u16string(u"com0"), std::u16string(u"a\x7F"), Repeat(u'a', 256)}) {
        EXPECT_TRUE(IsValidFileName(name)) << testing::PrintToString(name);
    }
    for (const std::u16string& name :
         {std::u16string(), std::u16string(u"a."), std::u16string(u"a "), std::u16string(u"a\v"),
          std::u16string(u"a?b"), std::u16string(u"a\x19!"), std::u16string(u"."),
          std::u16string(u".."), std::u16string(u"Con.txt"), std::u16string(u"con.a.b"),
          std::u16string(u"COM9"), std::u16string(u"$mft.x"), Repeat(u'a', 257)}) {
        EXPECT_FALSE(IsValidFileName(name)) << testing::PrintToString(name);
    }
    int forbidden = 0;
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        forbidden += IsForbiddenCharacter(unit) ? 1 : 0;
    }
    EXPECT_EQ(forbidden, 39);
}

TEST(PathRules, PathsAreValidOrNot) {
    const struct {
        std::u16string fPath;
        bool fIsPath, fIsFile, fIsVolume;
    } kRows[] = {
        {u"", false, false, false},
        {u"C:", false, false, true},
        {u"C:\\", true, false, true},
        {u"z:\\", true, false, true},
        {u"1:\\", false, false, false},
        {u"C:\\a", true, true, false},
        {u"C:\\a\\", true, false, false},
        {u"C:\\a\\b.txt", true, true, false},
        {u"C:\\a\\\\b", false, false, false},
        {u"C:\\a.\\b", false, false, false},
        {u"C:\\nul\\b", false, false, false},
        {u"C:a", false, false, false},
        {u"C:/a", false, false, false},
        {u"\\a", false, false, false},
        {u"\\\\s", false, false, false},
        {u"\\\\s\\", false, false, false},
        {u"\\\\\\s\\t", false, false, false},
        {u"\\\\s\\t", true, true, true},
        {u"\\\\s\\t\\", true, false, true},
        {u"\\\\s\\t\\a\\b", true, true, false},
        {u"\\\\s\\t\\\\b", false, false, false},
        {u"\\\\s\\t:\\b", false, false, false},
        {u"\\\\?\\C:\\a", false, false, false},
        {u"C:\\" + Repeat(u'a', 200) + u'\\' + Repeat(u'b', 56), true, true, false},
        {u"C:\\" + Repeat(u'a', 200) + u'\\' + Repeat(u'b', 57), false, false, false},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(WinIsValidPath(row.fPath), row.fIsPath) << testing::PrintToString(row.fPath);
        EXPECT_EQ(WinIsValidFilePath(row.fPath), row.fIsFile) << testing::PrintToString(row.fPath);
        EXPECT_EQ(WinIsValidVolumePath(row.fPath), row.fIsVolume)
            << testing::PrintToString(row.fPath);
    }
}

TEST(PathRules, TheLongestNativePathIsThePlatformsOwn) {
    CFakeFileOps ops;
    std::u16string path = u"C:";
    for (int i = 0; i < 100; ++i) {
        path += u"\\component";
    }
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
    for (const size_t limit : {size_t{4}, size_t{3}, size_t{0}}) {
        EXPECT_EQ(TextRaised<NSLichen::XOutOfSpace>([&] { TruncateFileName(u"ab.wav", limit); }),
                  "not enough room for truncated file name");
    }
}

TEST(NameMaking, TakesNamesAndPathsApart) {
    std::u16string first;
    std::u16string second;
    const struct {
        std::u16string fName, fStem, fExtension;
    } kNames[] = {{u"a.b.c", u"a.b", u".c"},
                  {u"a", u"a", u""},
                  {u"a.", u"a", u"."},
                  {u".a", u"", u".a"},
                  {u"a." + Repeat(u'x', 255), u"a", u"." + Repeat(u'x', 255)},
                  {u"a." + Repeat(u'x', 256), u"a." + Repeat(u'x', 256), u""}};
    for (const auto& row : kNames) {
        SplitFileName(row.fName, first, second);
        EXPECT_EQ(first, row.fStem);
        EXPECT_EQ(second, row.fExtension);
    }
    SplitPath(u"C:\\a\\b", first, second);
    EXPECT_EQ(first + u"|" + second, u"C:\\a\\|b");
    SplitPath(u"b", first, second);
    EXPECT_EQ(first + u"|" + second, u"|b");
    SplitPath(u"C:\\a\\", first, second);
    EXPECT_EQ(first + u"|" + second, u"C:\\a\\|");

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

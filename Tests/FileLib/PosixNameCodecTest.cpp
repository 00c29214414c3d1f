#include "FileLib/Source/Win/PosixNameCodec.h"

#include "FileLib/Source/Win/PathRules.h"
#include "Text/UnicodeConversion.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

// Pieces that are hard for one rule or another, besides plain bytes.
const std::vector<std::string> kHostilePieces = {".",
                                                 "..",
                                                 " ",
                                                 "con",
                                                 "CON",
                                                 "nul.",
                                                 "$Secure",
                                                 "lpt1.a",
                                                 "\x1A",
                                                 "\x19",
                                                 "*",
                                                 "?",
                                                 ":",
                                                 "\\",
                                                 "\"",
                                                 "<|>",
                                                 "\x7F",
                                                 "\x80",
                                                 "\xC0\x80",
                                                 "\xC3",
                                                 "\xC3\xA9",
                                                 "\xE2\x82",
                                                 "\xE2\x82\xAC",
                                                 "\xED\xA0\x80",
                                                 "\xED\xB0\x80",
                                                 "\xEF\x80\x80",
                                                 "\xEF\x80\xAE",
                                                 "\xEF\x80\xAF",
                                                 "\xEF\x83\xBF",
                                                 "\xEF\x84\x80",
                                                 "\xF0\x9D\x84\x9E",
                                                 "\xF4\x90\x80\x80",
                                                 "\xF8\x88\x80\x80\x80",
                                                 "\xFE",
                                                 "\xFF"};

std::string MakeHostileName(std::mt19937& random) {
    std::string name;
    const size_t pieces = 1 + random() % 12;
    for (size_t i = 0; i < pieces; ++i) {
        if (random() % 3 == 0) {
            name += kHostilePieces[random() % kHostilePieces.size()];
        } else {
            const char byte = static_cast<char>(1 + random() % 255);
            name += byte == '/' ? '.' : byte;
        }
    }
    if (random() % 50 == 0) {
        name.append(255, static_cast<char>(0x80 + random() % 0x80));
    }
    return name.substr(0, 255);
}

TEST(PosixNameCodec, EveryNameIsValidAndComesBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 30000; ++i) {
        const std::string name = MakeHostileName(random);
        const std::u16string text = NativeNameFromPosix(name);
        ASSERT_TRUE(IsValidFileName(text)) << testing::PrintToString(name);
        ASSERT_EQ(PosixNameFromNative(text), name);
        // The text also survives its way through a URL.
        ASSERT_EQ(NSTextPackage::Utf8ToUtf16Default(NSTextPackage::Utf16ToUtf8(text)), text);
    }
}

TEST(PosixNameCodec, EveryPathIsValidAndComesBack) {
    std::mt19937 random(2);
    for (int i = 0; i < 1500; ++i) {
        std::string path;
        const size_t count = random() % 30;
        for (size_t k = 0; k < count; ++k) {
            path += '/' + MakeHostileName(random);
        }
        if (count == 0 || random() % 2 == 0) {
            path += '/';
        }
        const std::u16string text = NativeFromPosix(path);
        ASSERT_TRUE(IsPathWithin(text, kMinPathLength, kNoPathLimit));
        ASSERT_EQ(PosixFromNative(text), path);
    }
}

TEST(PosixNameCodec, WritesThisText) {
    const struct {
        std::string fBytes;
        std::u16string fText;
    } kRows[] = {
        {"/", u"C:\\"},
        {"/usr/lib/a.so", u"C:\\usr\\lib\\a.so"},
        {"/usr/", u"C:\\usr\\"},
        {"/a/../b/.", u"C:\\a\\.\xF02E\\b\\\xF02E"},
        {"/a?b: ", u"C:\\a\xF03F"
                   u"b\xF03A\xF020"},
        {"/\xC3\xA9\xE9", u"C:\\\xE9\xF0E9"},
        {"/con", u"C:\\\xF063"
                 u"on"},
        {"/$Secure.x", u"C:\\\xF024"
                       u"Secure.x"},
        {"/\xEF\x80\xAE", u"C:\\\xF0EF\xF080\xF0AE"},
        {"/\xF0\x9D\x84\x9E", u"C:\\\xD834\xDD1E"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(NativeFromPosix(row.fBytes), row.fText);
        EXPECT_EQ(PosixFromNative(row.fText), row.fBytes);
    }
    EXPECT_EQ(NativeFromPosix("//a///b//"), u"C:\\a\\b\\");
    EXPECT_EQ(PosixFromNative(u"c:\\a"), "/a");
}

TEST(PosixNameCodec, OtherVolumesAndSmuggledSeparatorsNameNothing) {
    for (const std::u16string& text :
         {std::u16string(u"D:\\a"), std::u16string(u"C:"), std::u16string(u"C:a"), std::u16string(),
          std::u16string(u"\\\\s\\t\\a"),
          std::u16string(u"C:\\a\xF02F"
                         u"b"),
          std::u16string(u"C:\\a/b"), std::u16string(u"C:\\a\xF000"),
          std::u16string(u"C:\\a\0b", 6)}) {
        EXPECT_EQ(PosixFromNative(text), "") << testing::PrintToString(text);
    }
}

} // namespace

} // namespace NSFileLibInternals

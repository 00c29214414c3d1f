#include "FileLib/Rules/PosixNameCodec.h"

#include "FileLib/Rules/PathRules.h"
#include "Text/UnicodeConversion.h"

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

// Pieces that are hard for one rule or another, besides plain bytes, parted by what no name has.
std::vector<std::string> MakeHostilePieces() {
    std::istringstream text("./../ /con/CON/nul./$Secure/lpt1.a/\x1A/\x19/*/?/:/\\/\"/<|>/\x7F/\x80"
                            "/\xC0\x80/\xC3/\xC3\xA9/\xE2\x82/\xE2\x82\xAC/\xED\xA0\x80"
                            "/\xED\xB0\x80/\xEF\x80\x80/\xEF\x80\xAE/\xEF\x80\xAF/\xEF\x83\xBF"
                            "/\xEF\x84\x80/\xF0\x9D\x84\x9E/\xF4\x90\x80\x80"
                            "/\xF8\x88\x80\x80\x80/\xFE/\xFF");
    std::vector<std::string> pieces;
    for (std::string piece; std::getline(text, piece, '/');) {
        pieces.push_back(piece);
    }
    return pieces;
}

std::string MakeHostileName(std::mt19937& random) {
    static const std::vector<std::string> kHostilePieces = MakeHostilePieces();
    std::string name;
    for (size_t pieces = 1 + random() % 12; pieces > 0; --pieces) {
        const char byte = static_cast<char>(1 + random() % 255);
        const bool isHostile = random() % 3 == 0 || byte == '/';
        name += isHostile ? kHostilePieces[random() % kHostilePieces.size()] : std::string(1, byte);
    }
    name.append(random() % 50 == 0 ? 255 : 0, static_cast<char>(0x80 + random() % 0x80));
    return name.substr(0, 255);
}

TEST(PosixNameCodec, EveryNameAndPathIsValidAndComesBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        std::string path;
        const size_t count = random() % 30;
        for (size_t k = 0; k < count; ++k) {
            const std::string name = MakeHostileName(random);
            const std::u16string text = NativeNameFromPosix(name);
            ASSERT_TRUE(IsValidFileName(text)) << testing::PrintToString(name);
            ASSERT_EQ(PosixNameFromNative(text), name);
            // The text also survives its way through a URL.
            ASSERT_EQ(NSTextPackage::Utf8ToUtf16Default(NSTextPackage::Utf16ToUtf8(text)), text);
            path += '/' + name;
        }
        path += count == 0 || random() % 2 == 0 ? "/" : "";
        const std::u16string text = NativeFromPosix(path);
        ASSERT_TRUE(IsPathWithin(text, kMinPathLength, kNoPathLimit));
        ASSERT_EQ(PosixFromNative(text), path);
    }
}

TEST(PosixNameCodec, WritesThisText) {
    const std::vector<std::pair<std::string, std::u16string>> kRows = {
        {"/", u"C:\\"},
        {"/usr/lib/a.so", u"C:\\usr\\lib\\a.so"},
        {"/usr/", u"C:\\usr\\"},
        {"/a/../b/.", u"C:\\a\\.\xF02E\\b\\\xF02E"},
        {"/a?!: ", u"C:\\a\xF03F!\xF03A\xF020"},
        {"/\xC3\xA9\xE9", u"C:\\\xE9\xF0E9"},
        {"/nul", u"C:\\\xF06Eul"},
        {"/$mft.x", u"C:\\\xF024mft.x"},
        {"/\xEF\x80\xAE", u"C:\\\xF0EF\xF080\xF0AE"},
        {"/\xF0\x9D\x84\x9E", u"C:\\\xD834\xDD1E"}};
    for (const auto& [bytes, text] : kRows) {
        EXPECT_EQ(NativeFromPosix(bytes), text);
        EXPECT_EQ(PosixFromNative(text), bytes);
    }
    EXPECT_EQ(NativeFromPosix("//a///b//"), u"C:\\a\\b\\");
    EXPECT_EQ(PosixFromNative(u"c:\\a"), "/a");
}

TEST(PosixNameCodec, OtherVolumesAndSmuggledSeparatorsNameNothing) {
    const std::u16string withZero(u"C:\\a\0b", 6);
    for (const std::u16string_view text : std::initializer_list<std::u16string_view>{
             u"D:\\a", u"C:", u"C:a", u"", u"\\\\s\\t\\a", u"C:\\a\xF02Fx", u"C:\\a/b",
             u"C:\\a\xF000", withZero}) {
        EXPECT_EQ(PosixFromNative(std::u16string(text)), "") << testing::PrintToString(text);
    }
}

} // namespace

} // namespace NSFileLibInternals

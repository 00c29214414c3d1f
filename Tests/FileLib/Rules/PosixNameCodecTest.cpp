#include "FileLib/Rules/PosixNameCodec.h"

#include "FileLib/Rules/PathRules.h"
#include "Text/UnicodeConversion.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

// Names of two pieces, each a single byte or one that is hard for one rule or another; behind some
// of them stands as much as a name may have.
std::vector<std::string> MakeHostileNames() {
    std::istringstream text("../con/CON/nul./$Secure/lpt1.a/\xC0\x80/\xC3\xA9/\xE2\x82/\xE2\x82\xAC"
                            "/\xED\xA0\x80/\xED\xB0\x80/\xEF\x80\x80/\xEF\x80\xAE/\xEF\x80\xAF"
                            "/\xEF\x83\xBF/\xEF\x84\x80/\xF0\x9D\x84\x9E/\xF4\x90\x80\x80"
                            "/\xF8\x88\x80\x80\x80");
    std::vector<std::string> pieces;
    for (std::string piece; std::getline(text, piece, '/');) {
        pieces.push_back(piece);
    }
    for (int byte = 1; byte < 256; ++byte) {
        pieces.emplace_back(byte != '/' ? 1 : 0, static_cast<char>(byte));
    }
    std::vector<std::string> names;
    for (size_t i = 0; i < pieces.size() * pieces.size(); i += 7) { // some pairs of each
        names.push_back(pieces[i / pieces.size()] + "a" + pieces[i % pieces.size()]);
        names.push_back(pieces[i / pieces.size()] + pieces[i % pieces.size()]);
        names.back().append(i % 99 == 0 ? 255 - names.back().size() : 0, static_cast<char>(i));
    }
    return names;
}

TEST(PosixNameCodec, EveryNameAndPathIsValidAndComesBack) {
    std::string folder = "/";
    for (const std::string& name : MakeHostileNames()) {
        if (name.empty() || name.find_first_of(std::string("/\0", 2)) != std::string::npos) {
            continue;
        }
        const std::u16string text = NativeNameFromPosix(name);
        ASSERT_TRUE(IsValidFileName(text)) << testing::PrintToString(name);
        ASSERT_EQ(PosixNameFromNative(text), name);
        // The text also survives its way through a URL.
        ASSERT_EQ(NSTextPackage::Utf8ToUtf16Default(NSTextPackage::Utf16ToUtf8(text)), text);
        const std::string path = folder + name;
        ASSERT_EQ(PosixFromNative(NativeFromPosix(path)), path);
        ASSERT_TRUE(IsPathWithin(NativeFromPosix(path), kMinPathLength, kNoPathLimit));
        folder = folder.size() < 300 ? path : "";
        folder += '/';
        ASSERT_EQ(PosixFromNative(NativeFromPosix(folder)), folder);
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

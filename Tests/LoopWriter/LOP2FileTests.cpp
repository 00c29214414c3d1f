#include "LoopWriter/LOP2File.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/IFF/CIFFFileReader.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"
#include "Tests/LoopWriter/Layout.h"

#include <gtest/gtest.h>

namespace LoopWriterTests {
namespace {

using namespace NSLoopWriter;
using NSPorter::FourCharID;

TEST(LOP2File, LayoutByteForByte) {
    SLOP2File file;
    file.fHead = {0x01020304, {1, 2, 3}, {0xAA, 0xBB}, {u"hi"}};
    file.fCreatorInfo = {{{{u"a"}, {}, {u"\u20AC"}, {}, {u"\u0414"}}}};
    file.fGeneralInfo = {0x01020304, 0x0506, 7, 8, 9, 10, 0x0B0C, 0x0D0E, -2, 0x11121314, 15, 16};
    file.fTesselInfo = {{3, 1}, 2, 12, -2, 0x01020304};
    file.fTesselExtraInfo = {{1}, 0x01020304, 5, 6, 7, 0x08090A0B, 0x0C0D0E0F, 16};
    file.fTransientShaper = {1, 0x0203, 0x0405, 0x0607};
    file.fEqualizer = {1, 0x0203, 0x0405, -2, 0x0607, 0x0809, -3, 0x0A0B, 0x0C0D};
    file.fCompressor = {1, 0x0203, 0x0405, 0x0607, 0x0809};
    file.fSlices = {{}, {0x01020304, 0x05060708, -2, 9}};
    file.fSampleInfo = {2, 7, 0x01020304, -2, -3, -4};
    file.fRawStream = Bytes{1, 2, 3};
    EXPECT_EQ(WriteLOP2(file),
              Layout("'CAT ' 0000014C 'LOP2'"
                     "'HEAD' 0000001F 01020304 BC01020300 AABB0000000000000000000000000000"
                     " 00000002 'hi' 00"
                     "'CREI' 00000021 00000001 'a' 00000000 00000001 80 00000000"
                     " FFFFFFFF BC01000000 00000002 D094 00"
                     "'GLOB' 00000016 01020304 0506 07 08 09 0A 0B0C 0D0E FFFE 11121314 0F 10"
                     "'TESL' 0000000F BC03010000 02 0C FFFFFFFE 01020304 00"
                     "'TSLX' 00000015 BC01000000 01020304 05 06 07 08090A0B 0C0D0E0F 10 00"
                     "'CAT ' 00000040 'DEVL'"
                     "'TRSH' 00000007 01 0203 0405 0607 00"
                     "'EQ  ' 00000011 01 0203 0405 FFFE 0607 0809 FFFD 0A0B 0C0D 00"
                     "'COMP' 00000009 01 0203 0405 0607 0809 00"
                     "'CAT ' 0000002C 'SLCL'"
                     "'SLCE' 0000000B 00000000 00000000 7FFF 00 00"
                     "'SLCE' 0000000B 01020304 05060708 FFFE 09 00"
                     "'SINF' 00000012 02 07 01020304 FFFFFFFE FFFFFFFD FFFFFFFC"
                     "'SDAT' 00000003 010203 00"));
}

TEST(StoredFields, FormsAndRawValues) {
    using EForm = SStoredVersion::EForm;
    const std::pair<SStoredVersion, const char*> versions[] = {
        {{255}, "BC FFFFFFFF 000000FF 00000000 00000000 00000004 00000000 00000000"},
        {{1, 2, 3, 5, 6, 7}, "BC FFFFFFFF 00000001 00000002 00000003 00000005 00000006 00000007"},
        {{.fMajor = 255, .fForm = EForm::kShort, .fMark = 1, .fShortLastByte = 9},
         "01 FF 00 00 09"},
    };
    for (const auto& [version, layout] : versions) {
        NSPorter::COwnedMemoryMedia media;
        WriteStoredVersion(media, version);
        EXPECT_EQ(Bytes(media.GetData(), media.GetData() + media.GetLength()), Layout(layout));
    }
    SStoredText plain{u"x\u0414", SStoredText::EForm::kPlain};
    SStoredText raw{u"xy", SStoredText::EForm::kLong};
    raw.fLongFormVersion.fMajor = 2;
    raw.fRawBytes = Bytes{0xFE};
    raw.fRawCount = 0x01020304;
    NSPorter::COwnedMemoryMedia media;
    WriteStoredText(media, plain);
    WriteStoredText(media, raw);
    EXPECT_EQ(Bytes(media.GetData(), media.GetData() + media.GetLength()),
              Layout("00000002 'x?' FFFFFFFF BC02000000 01020304 FE"));
}

// The ids of the top level as the reader finds them, with sizes.
std::string TopLevel(const Bytes& bytes) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    NSPorter::CIFFFileReader reader(&media, 0);
    reader.EnterCat(FourCharID("LOP2"));
    std::string text;
    for (bool more = reader.EnterFirstChild(); more; more = reader.EnterNextSibling()) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            text += static_cast<char>(reader.GetHeader().fID >> shift);
        }
        text += std::to_string(reader.GetDataSize()) + ' ';
    }
    return text;
}

TEST(LOP2File, EditsChangeTheLayout) {
    const std::pair<ChunkEdit, const char*> edits[] = {
        {{}, "HEAD29 GLOB22 TESL15 DEVL60 SLCL20 SINF18 SDAT16 "},
        {[](SIFFChunk& root) { LeaveOutChunk(root, FourCharID("EQ  ")); },
         "HEAD29 GLOB22 TESL15 DEVL34 SLCL20 SINF18 SDAT16 "},
        {[](SIFFChunk& root) { DuplicateChunk(root, FourCharID("SLCE")); },
         "HEAD29 GLOB22 TESL15 DEVL60 SLCL40 SINF18 SDAT16 "},
        {[](SIFFChunk& root) {
             MoveChunk(root, FourCharID("SDAT"), 1);
             MoveChunk(root, FourCharID("HEAD"), 99);
         },
         "SDAT16 GLOB22 TESL15 DEVL60 SLCL20 SINF18 HEAD29 "},
        {[](SIFFChunk& root) {
             TruncateChunk(root, FourCharID("SDAT"), 3);
             InsertChunk(root, FourCharID("LOP2"), 1, MakeSimpleChunk(FourCharID("JUNK"), {1}));
             InsertChunk(root, FourCharID("SLCL"), 0,
                         MakeGroup(SIFFChunk::EKind::kList, FourCharID("SLCE"), {}));
         },
         "HEAD29 JUNK1 GLOB22 TESL15 DEVL60 SLCL32 SINF18 SDAT3 "},
    };
    for (const auto& [edit, layout] : edits) {
        SLOP2File file;
        file.fRawStream = Bytes(16);
        file.fEdit = edit;
        EXPECT_EQ(TopLevel(WriteLOP2(file)), layout);
    }
    SLOP2File file;
    file.fEdit = [](SIFFChunk& root) { LeaveOutChunk(root, FourCharID("NONE")); };
    EXPECT_THROW(WriteLOP2(file), std::out_of_range);
}

TEST(IFFChunkTree, StatedSizesReplaceTheTrueOnesAndNothingElse) {
    SIFFChunk odd = MakeSimpleChunk(FourCharID("ODD "), {1});
    odd.fStoredSize = 0x01020304;
    SIFFChunk form = MakeGroup(SIFFChunk::EKind::kForm, FourCharID("IN  "), {odd, odd});
    form.fStoredSize = 0x05060708;
    EXPECT_EQ(WriteNestedTree(MakeGroup(SIFFChunk::EKind::kCat, FourCharID("OUT "), {form, odd})),
              Layout("'CAT ' 0000002E 'OUT ' 'FORM' 05060708 'IN  ' 'ODD ' 01020304 01 00"
                     "'ODD ' 01020304 01 00 'ODD ' 01020304 01 00"));
    for (const SIFFChunk& tree : {odd, MakeGroup(SIFFChunk::EKind::kCat, 0, {odd}),
                                  MakeGroup(SIFFChunk::EKind::kForm, 0, {form})}) {
        EXPECT_THROW(WriteFlatTree(tree), std::invalid_argument);
    }
}

} // namespace
} // namespace LoopWriterTests

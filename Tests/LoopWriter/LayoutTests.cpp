#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/TSLFile.h"
#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace LoopWriterTests {
namespace {

using namespace NSLoopWriter;
using NSPorter::FourCharID;
using Bytes = std::vector<uint8_t>;

// Two hex digits are a byte, what stands between single quotes stands for itself, blanks for
// nothing.
Bytes Layout(const std::string& text) {
    Bytes bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\'') {
            for (++i; text[i] != '\''; ++i) {
                bytes.push_back(static_cast<uint8_t>(text[i]));
            }
        } else if (text[i] != ' ') {
            bytes.push_back(static_cast<uint8_t>(std::stoul(text.substr(i++, 2), nullptr, 16)));
        }
    }
    return bytes;
}

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

TEST(TSLFile, LayoutByteForByte) {
    STSLFile file;
    file.fAudio.fSamples = {1, -2};
    file.SetLoop(0, 2);
    file.fMinor = 2;
    file.fBars = 300;
    file.fBeats = 3;
    file.fTempo = 0x01020304;
    file.fStoredFlag = 5;
    file.fSplitIntoSlices = 6;
    file.fDropMuted = 7;
    file.fTempoStored = 8;
    file.fStretchIndex = 0x090A;
    file.fSlices = {{1, true, 0x01020304, 0x0506}};
    file.fApplicationSize = 168;
    EXPECT_EQ(WriteTSL(file),
              Layout("'FORM' 0000012E 'AIFF'"
                     "'COMM' 00000012 0001 00000002 0010 400EAC44000000000000"
                     "'APPL' 000000AC 'TeSl' D1DADED0 01 02 04 04 2C 03 01020304 05 06 07 08 090A"
                     " 03DE 01 " +
                     std::string(270, '0') +
                     "0001 81 01020304 00 0506"
                     "'MARK' 00000024 0002 0001 00000000 0A 'Loop Start' 00"
                     " 0002 00000002 08 'Loop End' 00"
                     "'INST' 00000014 3C 00 00 7F 01 7F 0000 0001 0001 0002 0000 0000 0000"
                     "'SSND' 0000000C 00000000 00000000 0001 FFFE"));
}

TEST(LOPFile, LayoutByteForByte) {
    SLOPFile file;
    file.fAudio.fSamples = {1, -2};
    file.fAudio.fCommon.fHasCompression = true;
    file.fAudio.fCommon.fCompression = FourCharID("sowt");
    file.fAudio.fFrames = 0x01020304;
    file.fAudio.fSoundData = {0x01020304, 5};
    file.fAudio.fRawSoundData = Bytes{6};
    file.fMinor = 2;
    file.fSlices = {{0x01020304, 0x05060708, 0x090A0B0C}};
    file.fSliceCount = 0x0304;
    file.fApplicationSize = 1028;
    EXPECT_EQ(WriteLOP(file),
              Layout("'FORM' 00000444 'AIFF'"
                     "'COMM' 00000016 0001 01020304 0010 400EAC44000000000000 'sowt'"
                     "'APPL' 00000408 'LOP ' D1D1D1DA 01 02 00000F00 0304 0001D4C0" +
                     std::string(2000, '0') +
                     "01020304 05060708 090A0B0C"
                     "'SSND' 00000009 01020304 00000005 06 00"));
}

TEST(StoredFields, LongFormsAndRawBytes) {
    NSPorter::COwnedMemoryMedia media;
    WriteStoredVersion(media, {255});
    WriteStoredVersion(media, {1, 2, 3, 5, 6, 7});
    WriteStoredText(media, {u"x\u0414", SStoredText::EForm::kPlain});
    WriteStoredText(media, {u"xy", SStoredText::EForm::kLong, Bytes{0xFE}});
    EXPECT_EQ(Bytes(media.GetData(), media.GetData() + media.GetLength()),
              Layout("BC FFFFFFFF 000000FF 00000000 00000000 00000004 00000000 00000000"
                     "BC FFFFFFFF 00000001 00000002 00000003 00000005 00000006 00000007"
                     "00000002 'x?' FFFFFFFF BC01000000 00000001 FE"));
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
    EXPECT_THROW(FindChunk(form, FourCharID("NONE")), std::out_of_range);
}

} // namespace
} // namespace LoopWriterTests

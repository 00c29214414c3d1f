#include "LoopWriter/LOPFile.h"
#include "LoopWriter/TSLFile.h"
#include "Tests/LoopWriter/Layout.h"

#include <gtest/gtest.h>

namespace LoopWriterTests {
namespace {

using namespace NSLoopWriter;
using NSPorter::FourCharID;

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
    file.fAudio.fRawSampleRate = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    file.fAudio.fFrames = 0x01020304;
    file.fAudio.fSoundData = {0x01020304, 5};
    file.fAudio.fRawSoundData = Bytes{6};
    file.fMinor = 2;
    file.fSlices = {{0x01020304, 0x05060708, 0x090A0B0C}};
    file.fSliceCount = 0x0304;
    file.fApplicationSize = 1028;
    EXPECT_EQ(WriteLOP(file),
              Layout("'FORM' 00000444 'AIFF'"
                     "'COMM' 00000016 0001 01020304 0010 0102030405060708090A 'sowt'"
                     "'APPL' 00000408 'LOP ' D1D1D1DA 01 02 00000F00 0304 0001D4C0" +
                     std::string(2000, '0') +
                     "01020304 05060708 090A0B0C"
                     "'SSND' 00000009 01020304 00000005 06 00"));
}

} // namespace
} // namespace LoopWriterTests

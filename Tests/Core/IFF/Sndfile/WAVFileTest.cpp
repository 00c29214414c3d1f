// The RIFF reader on a file that an independent writer made.

#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/IFF/CRIFFReader2.h"

#include <sndfile.h>

#include <cstdio>
#include <fstream>

namespace NSPorter {

TEST(WAVFile, ChunksOfAnotherWritersFileAreFound) {
    const std::string path = testing::TempDir() + "looplibrary_riff_test.wav";
    SF_INFO info = {};
    info.samplerate = 22050;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* sound = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(sound, nullptr) << sf_strerror(nullptr);
    EXPECT_EQ(sf_set_string(sound, SF_STR_TITLE, "odd"), 0);
    const short samples[] = {1, -2, 3, -4, 0x1234};
    EXPECT_EQ(sf_writef_short(sound, samples, 5), 5);
    EXPECT_EQ(sf_close(sound), 0);
    std::ifstream stream(path, std::ios::binary);
    const std::string file{std::istreambuf_iterator<char>(stream), {}};
    std::remove(path.c_str());

    CMemoryMedia media = MediaOf(file);
    CRIFFReader2 reader(&media);
    CIFFChunkHeader header;
    ASSERT_TRUE(reader.FindForm(FourCharID("WAVE"), header));
    EXPECT_EQ(header.GetTotalSize(), media.GetLength());
    CRIFFReader2 level(&reader, header);
    EXPECT_EQ(BytesOf(*level.OpenChunk(FourCharID("fmt "))).substr(0, 8),
              "\1\0\1\0"s + LittleEndian(22050));
    EXPECT_EQ(BytesOf(*level.OpenChunk(FourCharID("data"))),
              "\x01\x00\xFE\xFF\x03\x00\xFC\xFF\x34\x12"s);
    ASSERT_TRUE(level.FindList(FourCharID("INFO"), header));
    CRIFFReader2 texts(&level, header);
    EXPECT_EQ(BytesOf(*texts.OpenChunk(FourCharID("INAM"))).substr(0, 3), "odd");
}

} // namespace NSPorter

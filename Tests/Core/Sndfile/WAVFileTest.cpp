// The RIFF reader on a file that an independent writer made.

#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/CRIFFReader2.h"

#include <sndfile.h>

namespace NSPorter {

namespace {

struct SMemoryFile {
    std::string fBytes;
    sf_count_t fPosition = 0;
};

SMemoryFile& FileOf(void* user) {
    return *static_cast<SMemoryFile*>(user);
}

sf_count_t GetLength(void* user) {
    return static_cast<sf_count_t>(FileOf(user).fBytes.size());
}

sf_count_t Seek(sf_count_t offset, int whence, void* user) {
    const sf_count_t start = whence == SEEK_SET   ? 0
                             : whence == SEEK_CUR ? FileOf(user).fPosition
                                                  : GetLength(user);
    return FileOf(user).fPosition = start + offset;
}

sf_count_t Read(void*, sf_count_t, void*) {
    return 0;
}

sf_count_t Write(const void* data, sf_count_t count, void* user) {
    SMemoryFile& file = FileOf(user);
    const auto position = static_cast<size_t>(file.fPosition);
    file.fBytes.resize(std::max(file.fBytes.size(), position + static_cast<size_t>(count)));
    file.fBytes.replace(position, static_cast<size_t>(count), static_cast<const char*>(data),
                        static_cast<size_t>(count));
    file.fPosition += count;
    return count;
}

sf_count_t Tell(void* user) {
    return FileOf(user).fPosition;
}

TEST(WAVFile, ChunksOfALibrarysFileAreFound) {
    SMemoryFile file;
    SF_VIRTUAL_IO access = {GetLength, Seek, Read, Write, Tell};
    SF_INFO info = {};
    info.samplerate = 22050;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* sound = sf_open_virtual(&access, SFM_WRITE, &info, &file);
    ASSERT_NE(sound, nullptr) << sf_strerror(nullptr);
    EXPECT_EQ(sf_set_string(sound, SF_STR_TITLE, "odd"), 0);
    const short samples[5] = {1, -2, 3, -4, 0x1234};
    EXPECT_EQ(sf_writef_short(sound, samples, 5), 5);
    EXPECT_EQ(sf_close(sound), 0);

    CMemoryMedia media = MediaOf(file.fBytes);
    CRIFFReader2 reader(&media);
    CIFFChunkHeader header;
    ASSERT_TRUE(reader.FindForm(FourCharID("WAVE"), header));
    EXPECT_EQ(header.GetTotalSize(), media.GetLength());
    CRIFFReader2 level(&reader, header);
    const std::unique_ptr<CMedia> format = level.OpenChunk(FourCharID("fmt "));
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(BytesOf(*format).substr(0, 8), "\1\0\1\0"s + LittleEndian(22050));
    const std::unique_ptr<CMedia> data = level.OpenChunk(FourCharID("data"));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(BytesOf(*data), "\x01\x00\xFE\xFF\x03\x00\xFC\xFF\x34\x12"s);
    ASSERT_TRUE(level.FindList(FourCharID("INFO"), header));
    CRIFFReader2 texts(&level, header);
    const std::unique_ptr<CMedia> title = texts.OpenChunk(FourCharID("INAM"));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(BytesOf(*title).substr(0, 3), "odd");
}

} // namespace

} // namespace NSPorter

#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/IFF/CIFFReader.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"
#include "PorterPackage/Core/Media/CPartialMedia.h"

namespace NSPorter {

constexpr uint32_t kForm = FourCharID("FORM");

static std::string Form(const std::string& chunks) {
    return Chunk("FORM", "AIFF" + chunks);
}

static bool Finds(const std::string& file, uint32_t id) {
    CMemoryMedia media = MediaOf(file);
    uint32_t size = 0;
    return CIFFReader(&media, kForm).FindChunk(id, size);
}

TEST(CIFFReader, FindsChunksAndStandsOnTheirData) {
    const std::string file = Form(Chunk("JUNK", "odd") + Chunk("CCCC", "") +
                                  Chunk("AAAA", "first") + Chunk("AAAA", "x"));
    CMemoryMedia media = MediaOf(file);
    CIFFReader reader(&media, kForm);
    uint32_t size = 0;
    EXPECT_TRUE(reader.FindChunk(FourCharID("CCCC"), size));
    EXPECT_TRUE(reader.FindChunk(kA, size));
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(media.ReadU8(), uint32_t{'f'});

    uint8_t bytes[3] = {};
    EXPECT_TRUE(reader.ReadChunkAt(kA, bytes, 2, 3));
    EXPECT_EQ(std::string(bytes, bytes + 3), "rst");
    EXPECT_FALSE(reader.ReadChunkAt(kB, bytes, 0, 1));
    constexpr int64_t most = 0x7FFFFFFFFFFFFFFF;
    const int64_t outside[][2] = {{0, 100}, {most, 3}, {1, most}, {-1, 1}, {1, -1}};
    for (const auto& [offset, count] : outside) {
        EXPECT_VIOLATION(reader.ReadChunkAt(kA, bytes, offset, count));
    }
}

TEST(CIFFReader, EndOfTheGroup) {
    const std::string data = Chunk("AAAA", "data");
    const std::string chunks = "AIFF" + data + Chunk("BBBB", "data");
    // A group that overstates is taken as far as the file goes, one that understates at its word.
    EXPECT_TRUE(Finds("FORM" + BigEndian(0xFFFFFFFF) + chunks, kB));
    EXPECT_FALSE(Finds("FORM" + BigEndian(16) + chunks, kB));
    // An empty chunk at the very end ends where the group does, and is not seen.
    EXPECT_FALSE(Finds(Form(data + Chunk("BBBB", "")), kB));
    EXPECT_TRUE(Finds(Form(data + Chunk("BBBB", "") + "x"), kB));
    for (const std::string& bad :
         {""s, "FOR"s, Form("").substr(0, 11), Form(""), Form(data).substr(0, 19), "F" + Form(data),
          "FORM" + BigEndian(3) + chunks}) {
        EXPECT_VIOLATION(Finds(bad, kA));
    }
}

TEST(CIFFReader, SizesThatWrapEndTheSearch) {
    // Size and 8 are added in 32 bits: a sum of nothing and a negative one end the search, and the
    // small sums behind go on inside the chunk's own header, with the padding of odd sizes.
    for (const uint32_t size : {0xFFFFFFF8U, 0x7FFFFFF7U, 0x7FFFFFF8U, 0x80000000U, 0xFFFFFFF7U,
                                0xFFFFFFF9U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        const std::string junk = "JUNK" + BigEndian(size);
        EXPECT_EQ(Finds(Form(junk + Chunk("AAAA", "data")), kA), size == 0xFFFFFFFF) << size;
    }
}

TEST(CIFFWriter, PatchesSizesAndPads) {
    COwnedMemoryMedia media;
    media.WriteU8('-');
    CIFFWriter writer(&media);
    writer.BeginGroup(kForm, FourCharID("AIFF"));
    EXPECT_EQ(BytesOf(media), "-FORM" + BigEndian(0xADDE1AB0) + "AIFF");
    writer.WriteChunk(kA, Raw("abc"), 3);
    writer.BeginChunk(kB);
    EXPECT_EQ(BytesOf(media).substr(29), BigEndian(0xADDE1AB0));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, writer.BeginChunk(kA));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, writer.EndGroup());
    media.SetPosition(0);
    EXPECT_THROW(writer.EndChunk(), std::length_error);
    media.SetPosition(media.GetLength());
    writer.Write(2, Raw("xy"));
    writer.EndChunk();
    writer.EndGroup();
    // Padding goes by the chunk's size, not by its position.
    EXPECT_EQ(BytesOf(media), "-" + Form(Chunk("AAAA", "abc") + Chunk("BBBB", "xy")));
    EXPECT_EQ(media.BytesLeft(), 0);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, writer.EndChunk());
}

TEST(CIFFWriter, UnpaddedAndNativeInsideAView) {
    COwnedMemoryMedia root;
    CPartialMedia view(&root, 0);
    CIFFWriter writer(&view);
    writer.SetUnpadded();
    writer.SetNativeSizes();
    writer.BeginGroup(FourCharID("RIFF"), kType);
    writer.WriteChunk(kA, Raw("abc"), 3);
    // The cursor of the media around the view follows each end.
    writer.BeginChunk(kB);
    writer.Write(2, Raw("12"));
    writer.EndChunk();
    EXPECT_EQ(root.GetPosition(), 33);
    writer.Write(1, Raw("x"));
    writer.EndGroup();
    EXPECT_EQ(root.GetPosition(), 34);
    EXPECT_EQ(BytesOf(root),
              "RIFF" + Native(26) + "TYPEAAAA" + Native(3) + "abcBBBB" + Native(2) + "12x");
    CIFFReader reader(&root, FourCharID("RIFF"));
    reader.SetUnpadded();
    reader.SetNativeSizes();
    uint32_t size = 0;
    EXPECT_TRUE(reader.FindChunk(kB, size));
}

} // namespace NSPorter

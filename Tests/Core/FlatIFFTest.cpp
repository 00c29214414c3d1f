#include "CoreTestTools.h"

#include "PorterPackage/Core/CIFFReader.h"
#include "PorterPackage/Core/CIFFWriter.h"
#include "PorterPackage/Core/CPartialMedia.h"

namespace NSPorter {

namespace {

constexpr uint32_t kForm = FourCharID("FORM");
constexpr uint32_t kA = FourCharID("AAAA");
constexpr uint32_t kB = FourCharID("BBBB");

std::string Form(const std::string& chunks) {
    return Chunk("FORM", "AIFF" + chunks);
}

bool Finds(const std::string& file, uint32_t id, uint32_t& size) {
    CMemoryMedia media = MediaOf(file);
    return CIFFReader(&media, kForm).FindChunk(id, size);
}

TEST(FlatReader, FindsChunksAndStandsOnTheirData) {
    const std::string file = Form(Chunk("JUNK", "odd") + Chunk("CCCC", "") +
                                  Chunk("AAAA", "first") + Chunk("AAAA", "x"));
    CMemoryMedia media = MediaOf(file);
    CIFFReader reader(&media, kForm);
    uint32_t size = 0;
    EXPECT_TRUE(reader.FindChunk(FourCharID("CCCC"), size));
    EXPECT_EQ(size, 0U);
    EXPECT_TRUE(reader.FindChunk(kA, size));
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(media.ReadU8(), uint32_t{'f'});
    EXPECT_FALSE(reader.FindChunk(kB, size));

    uint8_t bytes[3] = {};
    EXPECT_TRUE(reader.ReadChunkAt(kA, bytes, 2, 3));
    EXPECT_EQ(std::string(bytes, bytes + 3), "rst");
    EXPECT_FALSE(reader.ReadChunkAt(kB, bytes, 0, 1));
    constexpr int64_t most = 0x7FFFFFFFFFFFFFFF;
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunkAt(kA, bytes, 0, 100));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunkAt(kA, bytes, most, 3));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunkAt(kA, bytes, 1, most));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunkAt(kA, bytes, -1, 1));
}

TEST(FlatReader, RefusesWhatIsNoGroup) {
    const std::string good = Form(Chunk("AAAA", "data"));
    uint32_t size = 0;
    for (size_t length = 0; length < 20; ++length) {
        const std::string file = good.substr(0, length);
        EXPECT_RAISES(NSLichen::XFormatViolation, "", Finds(file, kA, size));
    }
    EXPECT_RAISES(NSLichen::XFormatViolation, "", Finds("F" + good, kA, size));
    EXPECT_RAISES(NSLichen::XFormatViolation, "",
                  Finds("FORM" + BigEndian(3) + good.substr(8), kA, size));
}

TEST(FlatReader, EndOfTheGroup) {
    uint32_t size = 0;
    const std::string chunks = "AIFF" + Chunk("AAAA", "data") + Chunk("BBBB", "data");
    // A group that overstates is taken as far as the file goes, one that understates at its word.
    EXPECT_TRUE(Finds("FORM" + BigEndian(0xFFFFFFFF) + chunks, kB, size));
    EXPECT_FALSE(Finds("FORM" + BigEndian(16) + chunks, kB, size));
    // An empty chunk at the very end ends where the group does, and is not seen.
    EXPECT_FALSE(Finds(Form(Chunk("AAAA", "data") + Chunk("BBBB", "")), kB, size));
    EXPECT_TRUE(Finds(Form(Chunk("AAAA", "data") + Chunk("BBBB", "") + "x"), kB, size));
}

TEST(FlatReader, SizesThatWrapEndTheSearch) {
    struct Case {
        uint32_t fSize;
        bool fFound;
    };
    // Size and 8 are added in 32 bits: a sum of nothing and a negative one end the search, and the
    // small sums behind go on inside the chunk's own header, with the padding of odd sizes.
    for (const Case& c : {Case{0xFFFFFFF8, false}, Case{0x7FFFFFF8, false}, Case{0x80000000, false},
                          Case{0xFFFFFFF7, false}, Case{0x7FFFFFF7, false}, Case{0xFFFFFFFF, true},
                          Case{0xFFFFFFFE, false}}) {
        uint32_t size = 0;
        const std::string junk = "JUNK" + BigEndian(c.fSize);
        EXPECT_EQ(Finds(Form(junk + Chunk("AAAA", "data")), kA, size), c.fFound) << c.fSize;
    }
}

TEST(FlatReader, UnpaddedAndNativeSizes) {
    const std::string file = "FORM" + LittleEndian(4 + 11 + 12) + "AIFF" + "JUNK" +
                             LittleEndian(3) + "odd" + "AAAA" + LittleEndian(4) + "data";
    CMemoryMedia media = MediaOf(file);
    CIFFReader reader(&media, kForm);
    reader.SetUnpadded();
    reader.SetNativeSizes();
    uint32_t size = 0;
    EXPECT_EQ(std::endian::native, std::endian::little);
    EXPECT_TRUE(reader.FindChunk(kA, size));
    EXPECT_EQ(size, 4U);
}

TEST(FlatWriter, PatchesSizesAndPads) {
    COwnedMemoryMedia media;
    CIFFWriter writer(&media);
    writer.BeginGroup(kForm, FourCharID("AIFF"));
    EXPECT_EQ(BytesOf(media), "FORM" + BigEndian(0xADDE1AB0) + "AIFF");
    writer.WriteChunk(kA, Raw("abc"), 3);
    writer.BeginChunk(kB);
    EXPECT_EQ(BytesOf(media).substr(28), BigEndian(0xADDE1AB0));
    writer.Write(2, Raw("xy"));
    writer.EndChunk();
    writer.EndGroup();
    EXPECT_EQ(BytesOf(media), Form(Chunk("AAAA", "abc") + Chunk("BBBB", "xy")));
    EXPECT_EQ(media.BytesLeft(), 0);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writer.EndChunk());
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writer.EndGroup());
    writer.BeginChunk(kA);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writer.BeginChunk(kA));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writer.BeginGroup(kForm, kA));
}

TEST(FlatWriter, UnpaddedNativeAndInsideAView) {
    COwnedMemoryMedia root;
    root.WriteU8('-');
    CPartialMedia view(&root, 1);
    CIFFWriter writer(&view);
    writer.SetUnpadded();
    writer.SetNativeSizes();
    writer.BeginGroup(FourCharID("RIFF"), FourCharID("TYPE"));
    writer.WriteChunk(kA, Raw("abc"), 3);
    EXPECT_EQ(root.GetPosition(), 24);
    writer.WriteChunk(kB, Raw("z"), 1);
    writer.EndGroup();
    EXPECT_EQ(BytesOf(root), "-RIFF" + LittleEndian(24) + "TYPE" + "AAAA" + LittleEndian(3) +
                                 "abc" + "BBBB" + LittleEndian(1) + "z");
    EXPECT_EQ(root.BytesLeft(), 0);
}

TEST(FlatWriter, PaddingGoesByTheChunkAndNotByThePosition) {
    COwnedMemoryMedia media;
    media.WriteU8('-');
    CIFFWriter writer(&media);
    writer.WriteChunk(kA, Raw("ab"), 2);
    writer.WriteChunk(kB, Raw("abc"), 3);
    EXPECT_EQ(BytesOf(media), "-" + Chunk("AAAA", "ab") + Chunk("BBBB", "abc"));
}

} // namespace

} // namespace NSPorter

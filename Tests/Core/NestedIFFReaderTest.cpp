#include "CoreTestTools.h"

#include "PorterPackage/Core/CIFFFileReader.h"
#include "PorterPackage/Core/DumpIFFStructure.h"

namespace NSPorter {

namespace {

constexpr uint32_t kA = FourCharID("AAAA");
constexpr uint32_t kB = FourCharID("BBBB");
constexpr uint32_t kType = FourCharID("TYPE");

std::string ReadWhole(CMedia& media) {
    EXPECT_EQ(media.GetPosition(), 0);
    return BytesOf(media);
}

TEST(ChunkHeader, SizesByKind) {
    CIFFChunkHeader header;
    header.fSize = 10;
    for (int32_t kind = kIFFKind_Chunk; kind <= kIFFKind_Other; ++kind) {
        header.fKind = kind;
        EXPECT_EQ(header.GetHeaderSize(), kind == 0 ? 8 : 12);
        EXPECT_EQ(header.GetDataSize(), kind == 0 ? 10 : 6);
        EXPECT_EQ(header.GetTotalSize(), 18);
    }
    header.fSize = 3;
    EXPECT_RAISES(NSLichen::XFormatViolation, "", header.GetDataSize());
    for (const int32_t kind : {-1, 5}) {
        header.fKind = kind;
        EXPECT_RAISES(NSLichen::NSLichenDetails::XStdException, "", header.GetHeaderSize());
    }
}

TEST(NestedReader, HeadersOfEachKind) {
    struct Case {
        std::string fWord;
        int32_t fKind;
        uint32_t fID;
    };
    for (const Case& c : {Case{"FORM", kIFFKind_Form, kType}, Case{"CAT ", kIFFKind_Cat, kType},
                          Case{"LIST", kIFFKind_List, kType}, Case{"AAAA", kIFFKind_Chunk, kA},
                          Case{"RIFF", kIFFKind_Chunk, FourCharID("RIFF")}}) {
        const std::string file = Chunk("BBBB", "x") + Chunk(c.fWord, "TYPE");
        CMemoryMedia media = MediaOf(file);
        CIFFReader2 reader(&media, kIFFMode_BigEndian);
        media.SetPosition(10);
        CIFFChunkHeader header;
        reader.ReadHeader(header);
        EXPECT_EQ(header.fKind, c.fKind);
        EXPECT_EQ(header.fID, c.fID);
        EXPECT_EQ(header.fFormat, 0U);
        EXPECT_EQ(header.fOffset, 10);
        EXPECT_EQ(header.fSize, 4);
        EXPECT_EQ(media.GetPosition(), 10 + header.GetHeaderSize());
    }
}

TEST(NestedReader, MalformedHeadersFailEverySearchThatMeetsThem) {
    const std::string good = Chunk("BBBB", "data");
    for (const std::string& bad :
         {"AA\x1F"s + "A" + BigEndian(0), " AAA" + BigEndian(0),
          "AA\x7F"
          "A" +
              BigEndian(0),
          "AAAA" + BigEndian(100), "AAAA" + BigEndian(0xFFFFFFFF),
          "FORM" + BigEndian(8) + "TY\x01P", "FORM" + BigEndian(8) + " YPE"}) {
        const std::string file = bad + good;
        CMemoryMedia media = MediaOf(file);
        CIFFFileReader reader(&media, kIFFMode_BigEndian);
        EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.TryEnterChunk(kB));
        EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.CountChunks());
        const std::string behind = good + bad;
        CMemoryMedia second = MediaOf(behind);
        CIFFFileReader other(&second, kIFFMode_BigEndian);
        EXPECT_TRUE(other.TryEnterChunk(kB));
    }
    // Cut off in the id, in the size and in the type; bytes behind the last chunk are no chunk.
    for (const std::string& rest : {"AAA"s, "AAAA\0\0\0"s, "FORM" + BigEndian(3) + "TYP"}) {
        const std::string file = good + rest;
        CMemoryMedia media = MediaOf(file);
        CIFFReader2 reader(&media, kIFFMode_BigEndian);
        CIFFChunkHeader header;
        EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.FindChunk(kA, header));
    }
}

TEST(NestedReader, FindsAcrossEmptyAndOddChunks) {
    const std::string file = Chunk("AAAA", "") + Chunk("FORM", "BBBB") + Chunk("CCCC", "odd") +
                             Chunk("BBBB", "one") + Chunk("BBBB", "two");
    // The pad byte of the very last chunk may be missing.
    const std::string unpadded = file.substr(0, file.size() - 1);
    CMemoryMedia media = MediaOf(unpadded);
    CIFFReader2 reader(&media, kIFFMode_BigEndian);
    media.SetPosition(5);
    EXPECT_EQ(reader.CountChunks(), 5);
    EXPECT_EQ(media.GetPosition(), 5);

    CIFFChunkHeader header;
    EXPECT_TRUE(reader.FindChunk(kA, header));
    EXPECT_EQ(header.GetDataSize(), 0);
    EXPECT_TRUE(reader.FindForm(kB, header));
    EXPECT_EQ(reader.MakeChildMedia(header)->GetLength(), 0);
    EXPECT_FALSE(reader.FindCat(kB, header));
    EXPECT_FALSE(reader.FindList(kB, header));
    EXPECT_EQ(header.fKind, kIFFKind_Form);

    media.SetPosition(1);
    EXPECT_EQ(ReadWhole(*reader.OpenChunk(kB)), "one");
    EXPECT_EQ(reader.OpenChunk(kType), nullptr);
    uint8_t bytes[3] = {};
    reader.ReadChunk(kB, bytes);
    EXPECT_EQ(std::string(bytes, bytes + 3), "one");
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunk(kType, bytes));
    header = {kIFFKind_Chunk, 0, kA, media.GetLength() - 10, 3};
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadChunkData(header, bytes));
}

TEST(NestedReader, MediaTooShortForAHeader) {
    const std::string file = "AAAA\0\0\0"s;
    CMemoryMedia media = MediaOf(file);
    CIFFReader2 reader(&media, kIFFMode_BigEndian);
    CIFFChunkHeader header;
    EXPECT_FALSE(reader.ReadFirstHeader(header));
    EXPECT_FALSE(reader.FindChunk(kA, header));
    EXPECT_EQ(reader.CountChunks(), 0);
    EXPECT_THROW(CIFFReader2(&media, 2), std::invalid_argument);
}

TEST(NestedReader, GroupTooSmallForItsTypeFailsWhenItsDataIsAskedFor) {
    const std::string file = "FORM" + BigEndian(3) + "TYPE" + Chunk("AAAA", "x");
    CMemoryMedia media = MediaOf(file);
    CIFFReader2 reader(&media, kIFFMode_BigEndian);
    CIFFChunkHeader header;
    EXPECT_TRUE(reader.FindForm(kType, header));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", header.GetDataSize());
    CIFFFileReader levels(&media, kIFFMode_BigEndian);
    EXPECT_RAISES(NSLichen::XFormatViolation, "", levels.EnterForm(kType));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", levels.Leave());
}

TEST(FileReader, WalksLevels) {
    const std::string list =
        "TYPE" + Chunk("AAAA", "1") + Chunk("FORM", "BBBBxx") + Chunk("AAAA", "");
    const std::string file =
        Chunk("CAT ", "TYPE" + Chunk("AAAA", "head") + Chunk("LIST", list) + Chunk("BBBB", "tail"));
    CMemoryMedia media = MediaOf(file);
    CIFFFileReader reader(&media, kIFFMode_BigEndian);
    EXPECT_FALSE(reader.TryEnterForm(kType));
    reader.EnterCat(kType);
    EXPECT_EQ(reader.CountChunks(), 3);
    // In any order, and more than once.
    for (int i = 0; i < 2; ++i) {
        reader.EnterChunk(kB);
        EXPECT_EQ(ReadWhole(*reader.GetMedia()), "tail");
        EXPECT_EQ(reader.GetDataSize(), 4);
        uint8_t bytes[4] = {};
        reader.ReadData(bytes);
        EXPECT_EQ(std::string(bytes, bytes + 4), "tail");
        reader.Leave();
        EXPECT_EQ(ReadWhole(*reader.OpenChunk(kA)), "head");
    }
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.EnterChunk(kType));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.EnterForm(kType));
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.EnterCat(kType));
    EXPECT_FALSE(reader.TryEnterCat(kType));

    reader.EnterList(kType);
    std::string seen;
    for (bool inside = reader.EnterFirstChild(); inside; inside = reader.EnterNextSibling()) {
        seen += BigEndian(reader.GetHeader().fID) + ReadWhole(*reader.GetMedia()) + "|";
    }
    EXPECT_EQ(seen, "AAAA1|BBBBxx|AAAA|");
    // The walk has left its children's level, and the list is the current one again.
    EXPECT_EQ(reader.GetHeader().fKind, kIFFKind_List);
    reader.Leave();
    EXPECT_EQ(reader.GetHeader().fKind, kIFFKind_Cat);
}

TEST(FileReader, FailureLeavesTheLevelsAsTheyStood) {
    // The second group claims one byte more than its parent has.
    const std::string inner = Chunk("AAAA", "ab") + "CAT " + BigEndian(9) + "TYPExxxx";
    const std::string file = Chunk("CAT ", "TYPE" + inner) + Chunk("BBBB", "behind");
    CMemoryMedia media = MediaOf(file);
    CIFFFileReader reader(&media, kIFFMode_BigEndian);
    reader.EnterCat(kType);
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.EnterCat(kType));
    EXPECT_EQ(reader.GetHeader().fSize, media.GetLength() - 14 - 8);
    ASSERT_TRUE(reader.EnterFirstChild());
    EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.EnterNextSibling());
    EXPECT_EQ(reader.GetHeader().fID, kA);
    EXPECT_RAISES(NSLichen::XRead, "", reader.GetMedia()->ReadU32());
    reader.Leave();
    reader.Leave();
    reader.EnterChunk(kB);
    reader.Leave();
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", reader.EnterNextSibling());
}

TEST(IsIFFMedia, WantsAWholeGroupAtTheStart) {
    const std::string group = Chunk("FORM", "TYPE");
    for (const std::string& yes : {group, Chunk("CAT ", "TYPE"), group + "rest"}) {
        CMemoryMedia media = MediaOf(yes);
        media.SetPosition(3);
        EXPECT_TRUE(IsIFFMedia(media, kIFFMode_BigEndian));
        EXPECT_EQ(media.GetPosition(), 3);
        EXPECT_FALSE(IsIFFMedia(media, 7));
    }
    for (const std::string& no :
         {Chunk("AAAA", "TYPE"), group.substr(0, 11), ""s, "\1\2\3"s + group}) {
        CMemoryMedia media = MediaOf(no);
        EXPECT_FALSE(IsIFFMedia(media, kIFFMode_BigEndian));
    }
    const std::string native = "FORM" + LittleEndian(4) + "TYPE";
    CMemoryMedia media = MediaOf(native);
    EXPECT_EQ(IsIFFMedia(media, kIFFMode_Native), std::endian::native == std::endian::little);
}

TEST(DumpIFFStructure, ListsChunksByLevel) {
    const std::string file =
        Chunk("CAT ", "TYPE" + Chunk("AAAA", "abc") + Chunk("FORM", "BBBB" + Chunk("A  A", ""))) +
        Chunk("LIST", "TYPE");
    CMemoryMedia media = MediaOf(file);
    COwnedMemoryMedia output;
    DumpIFFStructure(media, output, 1);
    EXPECT_EQ(BytesOf(output), " Dumping contents of 'CAT ' chunk (TYPE), size 32\n"
                               "     Simple chunk, type: AAAA, size: 3\n"
                               "     Dumping contents of 'FORM' chunk (BBBB), size 8\n"
                               "         Simple chunk, type: A  A, size: 0\n"
                               " Dumping contents of 'LIST' chunk (TYPE), size 0\n");
}

TEST(DumpIFFStructure, DepthAndIndentAreBounded) {
    std::string file;
    for (int level = 0; level < 3000; ++level) {
        file = Chunk("FORM", "TYPE" + file);
    }
    CMemoryMedia media = MediaOf(file);
    COwnedMemoryMedia output;
    DumpIFFStructure(media, output, 2147483647);
    const std::string text = BytesOf(output);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 65);
    EXPECT_EQ(text.find_first_not_of(' '), 200U);
    EXPECT_EQ(text.rfind('D') - text.rfind('\n', text.size() - 2), 201U);
}

} // namespace

} // namespace NSPorter

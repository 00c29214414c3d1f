#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/IFF/CIFFFileReader.h"
#include "PorterPackage/Core/IFF/DumpIFFStructure.h"

namespace NSPorter {

TEST(CIFFReader2, MalformedHeadersFailEverySearchThatMeetsThem) {
    const std::string good = Chunk("BBBB", "data");
    CMemoryMedia start = MediaOf(good);
    EXPECT_FALSE(IsIFFMedia(start, kIFFMode_BigEndian));
    for (const std::string& bad :
         {"AA\x1F" + "A"s + BigEndian(0), " AAA" + BigEndian(0), "AA\x7F" + "A"s + BigEndian(0),
          "AAAA" + BigEndian(100), "AAAA" + BigEndian(0xFFFFFFFF),
          "FORM" + BigEndian(8) + "TY\x01P", "FORM" + BigEndian(8) + " YPE"}) {
        const std::string file = bad + good;
        CMemoryMedia media = MediaOf(file);
        CIFFFileReader reader(&media, kIFFMode_BigEndian);
        EXPECT_VIOLATION(reader.TryEnterChunk(kB));
        EXPECT_VIOLATION(reader.CountChunks());
        EXPECT_FALSE(IsIFFMedia(media, kIFFMode_BigEndian));
    }
    // Cut off in the id, in the size and in the type: bytes behind the last chunk are not a chunk,
    // and a search that finds its chunk before them does not notice.
    for (const std::string& rest : {"AAA"s, "AAAA\0\0\0"s, "FORM" + BigEndian(3) + "TYP"}) {
        const std::string file = good + rest;
        CMemoryMedia media = MediaOf(file);
        CIFFReader2 reader(&media, kIFFMode_BigEndian);
        CIFFChunkHeader header;
        EXPECT_TRUE(reader.FindChunk(kB, header));
        EXPECT_VIOLATION(reader.FindChunk(kA, header));
    }
}

TEST(CIFFReader2, FindsAcrossEmptyAndOddChunks) {
    // The pad byte of the very last chunk may be missing.
    const std::string file = Chunk("AAAA", "") + Chunk("FORM", "BBBB") + Chunk("CCCC", "odd") +
                             Chunk("BBBB", "one") + "BBBB" + BigEndian(3) + "two";
    CMemoryMedia media = MediaOf(file);
    CIFFReader2 reader(&media, kIFFMode_BigEndian);
    media.SetPosition(5);
    EXPECT_EQ(reader.CountChunks(), 5);
    EXPECT_EQ(media.GetPosition(), 5);

    CIFFChunkHeader header;
    EXPECT_FALSE(reader.FindCat(kB, header) || reader.FindList(kB, header));
    EXPECT_TRUE(reader.FindForm(kB, header));
    EXPECT_EQ(reader.MakeChildMedia(header)->GetLength(), 0);
    EXPECT_EQ(CIFFReader2(&reader, header).CountChunks(), 0);

    // A view starts at its first byte, wherever this level's cursor stands.
    reader.FindChunk(kB, header);
    media.SetPosition(1);
    EXPECT_EQ(reader.MakeChildMedia(header)->GetPosition(), 0);
    EXPECT_EQ(BytesOf(*reader.OpenChunk(kB)), "one");
    EXPECT_EQ(reader.OpenChunk(kType), nullptr);
    uint8_t bytes[3] = {};
    EXPECT_VIOLATION(reader.ReadChunk(kType, bytes));
    reader.ReadChunk(kB, bytes);
    EXPECT_EQ(bytes[2], 'e');
    header.fOffset = media.GetLength() - 10;
    EXPECT_VIOLATION(reader.ReadChunkData(header, bytes));
}

TEST(CIFFReader2, TooShortOrOfNoKind) {
    const std::string seven = "AAAA\0\0\0"s;
    CMemoryMedia media = MediaOf(seven);
    CIFFChunkHeader header;
    EXPECT_FALSE(CIFFReader2(&media, kIFFMode_BigEndian).FindChunk(kA, header));
    EXPECT_THROW(CIFFReader2(&media, 2), std::invalid_argument);
    // A group too small for its type fails when its data is asked for, not before.
    const std::string small = "FORM" + BigEndian(3) + "TYPE" + Chunk("AAAA", "x");
    CMemoryMedia group = MediaOf(small);
    EXPECT_TRUE(CIFFReader2(&group, kIFFMode_BigEndian).FindForm(kType, header));
    EXPECT_VIOLATION(header.GetDataSize());
    for (const int32_t kind : {-1, 5}) {
        header.fKind = kind;
        EXPECT_RAISES(NSLichen::NSLichenDetails::XStdException, header.GetHeaderSize());
    }
}

TEST(CIFFFileReader, WalksLevels) {
    const std::string list =
        "TYPE" + Chunk("AAAA", "1") + Chunk("FORM", "BBBBxx") + Chunk("AAAA", "");
    const std::string file =
        Chunk("CAT ", "TYPE" + Chunk("AAAA", "head") + Chunk("LIST", list) + Chunk("BBBB", "tail"));
    CMemoryMedia media = MediaOf(file);
    EXPECT_TRUE(IsIFFMedia(media, kIFFMode_BigEndian));
    CIFFFileReader reader(&media, kIFFMode_BigEndian);
    // A group is found by its kind as well as its type.
    EXPECT_FALSE(reader.TryEnterForm(kType) || reader.TryEnterList(kType));
    EXPECT_VIOLATION(reader.EnterForm(kType));
    EXPECT_TRUE(reader.TryEnterCat(kType));
    EXPECT_EQ(reader.CountChunks(), 3);
    // In any order, and more than once.
    for (int i = 0; i < 2; ++i) {
        reader.EnterChunk(kB);
        uint8_t bytes[4] = {};
        reader.ReadData(bytes);
        EXPECT_EQ(std::string(bytes, bytes + 4), "tail");
        reader.Leave();
        EXPECT_EQ(BytesOf(*reader.OpenChunk(kA)), "head");
    }
    EXPECT_VIOLATION(reader.EnterChunk(kType));
    reader.EnterList(kType);
    std::string seen;
    for (bool inside = reader.EnterFirstChild(); inside; inside = reader.EnterNextSibling()) {
        seen += BigEndian(reader.GetHeader().fID) + BytesOf(*reader.GetMedia()) + "|";
    }
    EXPECT_EQ(seen, "AAAA1|BBBBxx|AAAA|");
    // The walk has left its children's level, and the list is the current one again.
    EXPECT_EQ(reader.GetHeader().fKind, kIFFKind_List);
    reader.Leave();
    EXPECT_EQ(reader.GetHeader().fKind, kIFFKind_Cat);
}

TEST(CIFFFileReader, FailureLeavesTheLevelsAsTheyStood) {
    // The second group claims one byte more than its parent has, or too few for its type.
    for (const std::string& second :
         {"CAT " + BigEndian(9) + "TYPExxxx", "FORM" + BigEndian(3) + "TYPE"}) {
        const std::string file =
            Chunk("CAT ", "TYPE" + Chunk("AAAA", "ab") + second) + Chunk("BBBB", "behind");
        CMemoryMedia media = MediaOf(file);
        CIFFFileReader reader(&media, kIFFMode_BigEndian);
        reader.EnterCat(kType);
        EXPECT_VIOLATION(reader.EnterCat(kType));
        ASSERT_TRUE(reader.EnterFirstChild());
        EXPECT_VIOLATION(reader.EnterNextSibling());
        EXPECT_EQ(reader.GetHeader().fID, kA);
        EXPECT_RAISES(NSLichen::XRead, reader.GetMedia()->ReadU32());
        reader.Leave();
        reader.Leave();
        reader.EnterChunk(kB);
        reader.Leave();
        EXPECT_RAISES(NSLichen::XIllegalCallSequence, reader.EnterNextSibling());
    }
}

TEST(DumpIFFStructure, ListsChunksByLevel) {
    std::string file =
        Chunk("CAT ", "TYPE" + Chunk("AAAA", "abc") + Chunk("FORM", "BBBB" + Chunk("A  A", ""))) +
        Chunk("LIST", "TYPE");
    const auto dump = [&](int32_t indent) {
        CMemoryMedia media = MediaOf(file);
        COwnedMemoryMedia output;
        DumpIFFStructure(media, output, indent);
        return BytesOf(output);
    };
    EXPECT_EQ(dump(1), " Dumping contents of 'CAT ' chunk (TYPE), size 32\n"
                       "     Simple chunk, type: AAAA, size: 3\n"
                       "     Dumping contents of 'FORM' chunk (BBBB), size 8\n"
                       "         Simple chunk, type: A  A, size: 0\n"
                       " Dumping contents of 'LIST' chunk (TYPE), size 0\n");
    // A group that is too short for its type ends the listing behind the lines before it.
    const std::string small = Chunk("AAAA", "") + "FORM" + BigEndian(3) + "TYPE";
    CMemoryMedia smallMedia = MediaOf(small);
    COwnedMemoryMedia begun;
    EXPECT_VIOLATION(DumpIFFStructure(smallMedia, begun, 0));
    EXPECT_EQ(BytesOf(begun), "Simple chunk, type: AAAA, size: 0\n");
    // Depth and indent are bounded.
    for (int level = 0; level < 3000; ++level) {
        file = Chunk("FORM", file.insert(0, "TYPE"));
    }
    const std::string text = dump(2147483647);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 65);
    EXPECT_EQ(text.find_first_not_of(' '), 200U);
}

} // namespace NSPorter

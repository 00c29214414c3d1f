#include "CoreTestTools.h"

#include "PorterPackage/Core/CIFFFileReader.h"
#include "PorterPackage/Core/CIFFFileWriter.h"
#include "PorterPackage/Core/CRIFFReader2.h"
#include "PorterPackage/Core/CRIFFWriter2.h"

namespace NSPorter {

namespace {

constexpr uint32_t kA = FourCharID("AAAA");
constexpr uint32_t kType = FourCharID("TYPE");
constexpr uint32_t kRiff = FourCharID("RIFF");
constexpr uint32_t kWave = FourCharID("WAVE");

TEST(NestedWriter, WritesWhatTheRulesSay) {
    COwnedMemoryMedia media;
    {
        CIFFFileWriter writer(&media, kIFFMode_BigEndian);
        writer.EnterCat(kType);
        EXPECT_EQ(writer.WriteChunk(kA, 3, Raw("abc")), 12);
        EXPECT_EQ(writer.WriteChunk(kA, 0, nullptr), 8);
        writer.EnterForm(kA);
        writer.EnterChunk(kA);
        writer.GetMedia()->WriteU8('x');
        writer.Leave();
        writer.EnterList(kType);
        writer.Leave();
        writer.Leave();
        writer.EnterChunk(kA);
        writer.GetMedia()->WriteU32(0x31323334);
        // What is still open is ended by the destructor.
    }
    const std::string form = "AAAA" + Chunk("AAAA", "x") + Chunk("LIST", "TYPE");
    EXPECT_EQ(BytesOf(media), Chunk("CAT ", "TYPE" + Chunk("AAAA", "abc") + Chunk("AAAA", "") +
                                                Chunk("FORM", form) + Chunk("AAAA", "1234")));
    EXPECT_EQ(media.BytesLeft(), 0);
}

TEST(NestedWriter, PadsByAbsolutePosition) {
    COwnedMemoryMedia media;
    media.WriteU8('-');
    CIFFWriter2 writer(&media, kIFFMode_BigEndian);
    EXPECT_EQ(writer.WriteChunk(kA, 2, Raw("ab")), 11);
    EXPECT_EQ(writer.WriteChunk(kA, 2, Raw("ab")), 10);
    EXPECT_EQ(BytesOf(media), "-" + Chunk("AAAA", "ab") + "\0"s + Chunk("AAAA", "ab"));
}

TEST(NestedWriter, LevelsByHand) {
    COwnedMemoryMedia media;
    CIFFWriter2 root(&media, kIFFMode_Native);
    CIFFChunkHeader group;
    root.BeginList(group, kType);
    EXPECT_EQ(group.fKind, kIFFKind_List);
    EXPECT_EQ(group.fID, kType);
    CIFFWriter2 level(&root, group);
    level.WriteChunk(kA, 4, Raw("data"));
    // The cursor of the root has followed.
    EXPECT_EQ(media.GetPosition(), 24);
    root.EndChunk(group, level.GetMedia()->GetLength());
    EXPECT_EQ(std::endian::native, std::endian::little);
    EXPECT_EQ(BytesOf(media), RIFFChunk("LIST", "TYPE" + RIFFChunk("AAAA", "data")));
    EXPECT_THROW(root.EndChunk(group, 0xFFFFFFFC), std::length_error);
    EXPECT_THROW(root.EndChunk(group, -1), std::length_error);

    CIFFFileWriter writer(&media, kIFFMode_BigEndian);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writer.Leave());
}

// Takes a number of writes and then no more.
class CFailingMedia : public COwnedMemoryMedia {
public:
    explicit CFailingMedia(int writes) : fWritesLeft(writes) {}

    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override {
        if (fWritesLeft-- < 1) {
            throw NSLichen::XWrite("");
        }
        COwnedMemoryMedia::WriteBytes(position, count, source);
    }

private:
    int fWritesLeft;
};

TEST(NestedWriter, DestructionSurvivesAMediaThatFails) {
    int failures = 0;
    for (int writes = 0; writes < 12; ++writes) {
        CFailingMedia media(writes);
        try {
            CIFFFileWriter writer(&media, kIFFMode_BigEndian);
            writer.EnterCat(kType);
            writer.EnterForm(kType);
            writer.WriteChunk(kA, 1, Raw("x"));
        } catch (const NSLichen::XWrite&) {
            ++failures;
        }
    }
    // Three writes for each group header, five for the chunk; the sizes of the groups are left to
    // the destructor, whose failures are silent.
    EXPECT_EQ(failures, 11);
}

TEST(RIFF, WritesAndReadsBackToTheByte) {
    COwnedMemoryMedia media;
    CRIFFWriter2 root(&media);
    CIFFChunkHeader riff;
    root.BeginGroup(riff, kRiff, kWave);
    EXPECT_EQ(riff.fKind, kIFFKind_Form);
    {
        CRIFFWriter2 level(&root, riff);
        level.WriteChunk(FourCharID("fmt "), 3, Raw("abc"));
        CIFFChunkHeader list;
        level.BeginList(list, FourCharID("INFO"));
        CRIFFWriter2 info(&level, list);
        info.WriteChunk(kA, 1, Raw("x"));
        level.EndChunk(list, info.GetMedia()->GetLength());
        CIFFChunkHeader cat;
        level.BeginCat(cat, kType);
        level.EndChunk(cat, 0);
        level.WriteChunk(FourCharID("FORM"), 2, Raw("\x01\x02"));
        root.EndChunk(riff, level.GetMedia()->GetLength());
    }
    const std::string file =
        RIFFChunk("RIFF", "WAVE" + RIFFChunk("fmt ", "abc") +
                              RIFFChunk("LIST", "INFO" + RIFFChunk("AAAA", "x")) +
                              RIFFChunk("CAT ", "TYPE") + RIFFChunk("FORM", "\x01\x02"));
    EXPECT_EQ(BytesOf(media), file);

    CRIFFReader2 reader(&media);
    CIFFChunkHeader header;
    ASSERT_TRUE(reader.FindForm(kWave, header));
    EXPECT_EQ(header.fKind, kIFFKind_Form);
    CRIFFReader2 level(&reader, header);
    EXPECT_EQ(level.CountChunks(), 4);
    // FORM is an ordinary chunk here, and what follows its size is no type.
    EXPECT_TRUE(level.FindChunk(FourCharID("FORM"), header));
    EXPECT_EQ(header.GetDataSize(), 2);
    EXPECT_TRUE(level.FindCat(kType, header));
    ASSERT_TRUE(level.FindList(FourCharID("INFO"), header));
    EXPECT_EQ(BytesOf(*CRIFFReader2(&level, header).OpenChunk(kA)), "x");
}

TEST(RIFF, RefusesMalformedHeaders) {
    CIFFChunkHeader header;
    for (const std::string& bad :
         {" AAA" + LittleEndian(0),
          "AA\x1F"
          "A" +
              LittleEndian(0),
          "AAAA" + LittleEndian(1), "AAAA" + BigEndian(1), "RIFF" + LittleEndian(4) + " AVE",
          "RIFF" + LittleEndian(0) + "WA"}) {
        CMemoryMedia media = MediaOf(bad);
        CRIFFReader2 reader(&media);
        EXPECT_RAISES(NSLichen::XFormatViolation, "", reader.ReadFirstHeader(header));
    }
    const std::string good = "A A " + LittleEndian(2) + "xy";
    CMemoryMedia media = MediaOf(good);
    CRIFFReader2 reader(&media);
    EXPECT_TRUE(reader.ReadFirstHeader(header));
    EXPECT_EQ(header.GetDataSize(), 2);
}

TEST(RIFF, StackOfLevelsWritesIt) {
    EXPECT_EQ(std::endian::native, std::endian::little);
    COwnedMemoryMedia media;
    CIFFFileWriter writer(&media, kIFFMode_Native);
    writer.EnterGroup(kRiff, kWave);
    writer.WriteChunk(FourCharID("data"), 3, Raw("abc"));
    writer.Leave();
    EXPECT_EQ(BytesOf(media), RIFFChunk("RIFF", "WAVE" + RIFFChunk("data", "abc")));
}

} // namespace

} // namespace NSPorter

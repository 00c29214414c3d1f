#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/IFF/CIFFFileReader.h"
#include "PorterPackage/Core/IFF/CIFFFileWriter.h"
#include "PorterPackage/Core/IFF/CRIFFReader2.h"
#include "PorterPackage/Core/IFF/CRIFFWriter2.h"

namespace NSPorter {

TEST(CIFFFileWriter, WritesWhatTheRulesSay) {
    COwnedMemoryMedia media;
    {
        CIFFFileWriter writer(&media, kIFFMode_BigEndian);
        EXPECT_RAISES(NSLichen::XIllegalCallSequence, writer.Leave());
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

TEST(CIFFFileWriter, NativeSizesComeBack) {
    COwnedMemoryMedia media;
    {
        CIFFFileWriter writer(&media, kIFFMode_Native);
        writer.EnterForm(kType);
        writer.WriteChunk(kA, 3, Raw("abc"));
    }
    EXPECT_EQ(BytesOf(media), "FORM" + Native(16) + "TYPEAAAA" + Native(3) + "abc\0"s);
    EXPECT_TRUE(IsIFFMedia(media, kIFFMode_Native));
    CIFFFileReader reader(&media, kIFFMode_Native);
    reader.EnterForm(kType);
    EXPECT_EQ(BytesOf(*reader.OpenChunk(kA)), "abc");
}

TEST(CIFFFileWriter, DestructionSurvivesAMediaThatFails) {
    // A block that cannot grow refuses the bytes themselves or, at odd sizes, only the pad byte
    // that the destructor writes.
    for (size_t size = 0; size < 40; ++size) {
        std::vector<uint8_t> block(size);
        CMemoryMedia media(static_cast<int64_t>(size), block.data());
        bool hasFailed = false;
        try {
            CIFFFileWriter writer(&media, kIFFMode_BigEndian);
            writer.EnterCat(kType);
            writer.EnterForm(kType);
            writer.WriteChunk(kA, 2, Raw("xy"));
        } catch (const NSLichen::XIllegalCallSequence&) {
            hasFailed = true;
        }
        EXPECT_EQ(hasFailed, size < 34) << size;
    }
}

TEST(CIFFWriter2, PadsByAbsolutePosition) {
    COwnedMemoryMedia media;
    media.WriteU8('-');
    CIFFWriter2 writer(&media, kIFFMode_BigEndian);
    EXPECT_EQ(writer.WriteChunk(kA, 2, Raw("ab")), 11);
    EXPECT_EQ(writer.WriteChunk(kA, 2, Raw("ab")), 10);
    EXPECT_EQ(BytesOf(media), "-" + Chunk("AAAA", "ab") + "\0"s + Chunk("AAAA", "ab"));
    CIFFChunkHeader form;
    writer.BeginCat(form, kType);
    EXPECT_EQ(form.fKind, kIFFKind_Cat);
    writer.BeginForm(form, kType);
    for (const int64_t size : {int64_t{0xFFFFFFFC}, int64_t{0x7FFFFFFFFFFFFFFF}, int64_t{-1}}) {
        EXPECT_THROW(writer.EndChunk(form, size), std::length_error) << size;
    }
}

TEST(RIFF, WritesAndReadsBackToTheByte) {
    COwnedMemoryMedia media;
    CRIFFWriter2 root(&media);
    CIFFChunkHeader riff;
    root.BeginGroup(riff, FourCharID("RIFF"), kWave);
    CRIFFWriter2 body(&root, riff);
    body.WriteChunk(FourCharID("fmt "), 3, Raw("abc"));
    // The cursor of the level above follows.
    EXPECT_EQ(media.GetPosition(), 24);
    CIFFChunkHeader list;
    body.BeginList(list, FourCharID("INFO"));
    EXPECT_EQ(media.GetPosition(), 36);
    CRIFFWriter2 info(&body, list);
    info.WriteChunk(kA, 1, Raw("x"));
    body.EndChunk(list, info.GetMedia()->GetLength());
    body.WriteChunk(FourCharID("FORM"), 2, Raw("\x01\x02"));
    root.EndChunk(riff, body.GetMedia()->GetLength());
    EXPECT_EQ(BytesOf(media),
              RIFFChunk("RIFF", "WAVE" + RIFFChunk("fmt ", "abc") +
                                    RIFFChunk("LIST", "INFO" + RIFFChunk("AAAA", "x")) +
                                    RIFFChunk("FORM", "\x01\x02")));
    CRIFFReader2 reader(&media);
    CIFFChunkHeader header;
    ASSERT_TRUE(reader.FindForm(kWave, header));
    CRIFFReader2 level(&reader, header);
    // FORM is an ordinary chunk here, and what follows its size is not a type.
    EXPECT_TRUE(level.FindChunk(FourCharID("FORM"), header));
    EXPECT_EQ(header.GetDataSize(), 2);
    ASSERT_TRUE(level.FindList(FourCharID("INFO"), header));
    EXPECT_EQ(BytesOf(*CRIFFReader2(&level, header).OpenChunk(kA)), "x");
}

} // namespace NSPorter

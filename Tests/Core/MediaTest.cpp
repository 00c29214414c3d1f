#include "CoreTestTools.h"

#include "PorterPackage/Core/CPartialMedia.h"
#include "PorterPackage/Core/CRawByteReader.h"

#include <limits>

namespace NSPorter {

namespace {

TEST(Media, PrimitivesAreBigEndianAndMoveTheCursor) {
    COwnedMemoryMedia media;
    media.WriteU8(0x1FE);
    media.WriteU16(0x1234);
    media.WriteU32(0x89ABCDEF);
    EXPECT_EQ(BytesOf(media), "\xFE\x12\x34\x89\xAB\xCD\xEF"s);
    EXPECT_EQ(media.GetPosition(), 7);

    media.SetPosition(0);
    EXPECT_EQ(media.PeekU8(), 0xFE);
    EXPECT_EQ(media.ReadU8(), 0xFEU);
    EXPECT_EQ(media.ReadU16(), 0x1234);
    EXPECT_EQ(media.ReadU32(), 0x89ABCDEFU);
    EXPECT_EQ(media.BytesLeft(), 0);

    uint8_t pair[2] = {};
    media.ReadAt(1, 2, pair);
    EXPECT_EQ(media.GetPosition(), 3);
    media.WriteAt(5, 2, pair);
    EXPECT_EQ(BytesOf(media), "\xFE\x12\x34\x89\xAB\x12\x34"s);

    // A cursor outside the media has nothing left to read, on either side.
    for (const int64_t position : {int64_t{-1}, int64_t{7}, std::numeric_limits<int64_t>::min(),
                                   std::numeric_limits<int64_t>::max()}) {
        media.SetPosition(position);
        EXPECT_EQ(media.BytesLeft(), 0) << position;
    }
}

template <class Media>
void ExpectGrowth() {
    struct Case {
        int64_t fCapacity, fNeeded, fGrown;
    };
    // Half as much again as is missing, at least a quarter where that is above 99, at least 100.
    for (const Case& c :
         {Case{0, 1, 100}, Case{100, 100, 100}, Case{100, 101, 200}, Case{399, 400, 499},
          Case{404, 405, 505}, Case{1000, 2000, 2500}, Case{0, 67, 100}, Case{0, 69, 103}}) {
        Media media(c.fCapacity);
        EXPECT_EQ(media.GetLength(), 0);
        media.SetPosition(c.fNeeded - 1);
        media.WriteU8(1);
        EXPECT_EQ(media.GetCapacity(), c.fGrown) << c.fCapacity << " to " << c.fNeeded;
        EXPECT_EQ(media.GetLength(), c.fNeeded);
    }
}

TEST(Media, BothMemoryMediaGrowByTheSameRule) {
    ExpectGrowth<CMemoryMedia>();
    ExpectGrowth<COwnedMemoryMedia>();
}

template <class Media>
void ExpectBytesSurviveGrowth() {
    Media media(int64_t{4});
    media.WriteU32(0x01020304);
    uint8_t* start = media.GetWritableBuffer(200);
    EXPECT_EQ(start, media.GetData());
    EXPECT_EQ(media.GetLength(), 204);
    EXPECT_EQ(start[3], 4);
    media.SetPosition(0);
    media.GetWritableBuffer(1);
    EXPECT_EQ(media.GetLength(), 204);

    media.SetPosition(-1);
    EXPECT_THROW(media.WriteU8(0), std::out_of_range);
    media.SetPosition(std::numeric_limits<int64_t>::max());
    EXPECT_THROW(media.WriteU8(0), std::bad_alloc);
    media.Write(0, nullptr);
    EXPECT_EQ(media.GetLength(), 204);
}

TEST(Media, GrowthKeepsBytesAndRefusesImpossibleRuns) {
    ExpectBytesSurviveGrowth<CMemoryMedia>();
    ExpectBytesSurviveGrowth<COwnedMemoryMedia>();
}

TEST(Media, OwnedArrayFillsGapsWithZeros) {
    COwnedMemoryMedia media(3, Raw("abc"));
    media.SetPosition(5);
    media.WriteU8('f');
    EXPECT_EQ(BytesOf(media), "abc\0\0f"s);
}

TEST(Media, CopiesTakeBytesAndCursor) {
    const std::string text = "abcdef";
    CMemoryMedia source = MediaOf(text);
    source.SetPosition(2);
    CMemoryMedia block(static_cast<const CMedia&>(source));
    CMemoryMedia same(source);
    COwnedMemoryMedia array(source);
    EXPECT_EQ(source.GetPosition(), 2);
    for (CMedia* copy : {static_cast<CMedia*>(&block), static_cast<CMedia*>(&same),
                         static_cast<CMedia*>(&array)}) {
        EXPECT_EQ(copy->GetPosition(), 2);
        copy->WriteU8('X');
        EXPECT_EQ(BytesOf(*copy), "abXdef");
    }
    EXPECT_EQ(text, "abcdef");
}

TEST(Media, BorrowedBlocksAreNeverReplaced) {
    std::string text = "abcd";
    CMemoryMedia writable(4, reinterpret_cast<uint8_t*>(text.data()));
    writable.WriteU32(0x41424344);
    EXPECT_EQ(text, "ABCD");
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writable.WriteU8(1));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", writable.GetWritableBuffer(1));

    CMemoryMedia readable = MediaOf(text);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", readable.WriteU8(1));
    EXPECT_EQ(text, "ABCD");
    EXPECT_EQ(readable.GetPosition(), 0);
}

TEST(Media, CopyFromMovesBothCursors) {
    const std::string text = "0123456789";
    for (const int64_t bufferSize : {1, 3, 7, 100}) {
        CMemoryMedia source = MediaOf(text);
        source.SetPosition(1);
        COwnedMemoryMedia target;
        target.CopyFrom(7, source, bufferSize);
        EXPECT_EQ(BytesOf(target), "1234567");
        EXPECT_EQ(source.GetPosition(), 8);
        EXPECT_EQ(target.GetPosition(), 7);
        target.CopyFrom(0, source, bufferSize);
        EXPECT_EQ(target.GetLength(), 7);
        EXPECT_THROW(target.CopyFrom(1, source, 0), std::invalid_argument);
    }
}

TEST(PartialMedia, ReadOnlyViewGuardsItsEnds) {
    const std::string text = "0123456789";
    CMemoryMedia parent = MediaOf(text);
    parent.SetPosition(4);
    CPartialMedia view(&parent, 4, 3);
    EXPECT_EQ(view.GetPosition(), 0);
    EXPECT_EQ(view.GetLength(), 3);
    EXPECT_EQ(view.ReadU16(), 0x3435);

    struct Case {
        int64_t fPosition, fCount;
    };
    constexpr int64_t most = std::numeric_limits<int64_t>::max();
    uint8_t bytes[8] = {};
    for (const Case& c : {Case{0, 4}, Case{3, 1}, Case{4, 0}, Case{-4, 4}, Case{-1, 0}, Case{1, -1},
                          Case{1, most}, Case{most, 1}}) {
        EXPECT_RAISES(NSLichen::XRead, "", view.ReadBytes(c.fPosition, c.fCount, bytes));
    }
    EXPECT_RAISES(NSLichen::XRead, "", view.ReadU32());
    EXPECT_EQ(view.GetPosition(), 2);
    EXPECT_EQ(parent.GetPosition(), 4);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, "", view.WriteU8(1));

    CPartialMedia empty(&parent, 4, 0);
    empty.ReadBytes(0, 0, bytes);
    EXPECT_RAISES(NSLichen::XRead, "", empty.ReadBytes(0, 1, bytes));
}

TEST(PartialMedia, WritableViewFollowsItsParent) {
    COwnedMemoryMedia root;
    root.WriteU32(0);
    CPartialMedia outer(&root, 4);
    EXPECT_EQ(outer.GetLength(), 0);
    outer.WriteU16(0x4142);
    CPartialMedia inner(&outer, 2);
    inner.WriteU8(0x43);
    EXPECT_EQ(BytesOf(root), "\0\0\0\0ABC"s);
    EXPECT_EQ(outer.GetLength(), 3);

    inner.Flush(false);
    EXPECT_EQ(outer.GetPosition(), 3);
    EXPECT_EQ(root.GetPosition(), 4);
    inner.Flush(true);
    EXPECT_EQ(root.GetPosition(), 7);
}

TEST(RawByteReader, ReadsByPosition) {
    const std::string text = "0123456789";
    CMemoryMedia media = MediaOf(text);
    CRawByteReader reader(&media);
    uint8_t bytes[4] = {};
    EXPECT_EQ(reader.Read(3, 4, bytes), NSLichen::kByteStreamStatus_OK);
    EXPECT_EQ(std::string(bytes, bytes + 4), "3456");
    EXPECT_EQ(reader.Read(0, -1, bytes), NSLichen::kByteStreamStatus_OK);
    EXPECT_EQ(media.GetPosition(), 7);
}

} // namespace

} // namespace NSPorter

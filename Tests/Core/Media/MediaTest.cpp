#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/Media/CPartialMedia.h"
#include "PorterPackage/Core/Media/CRawByteReader.h"

#include <limits>

namespace NSPorter {

constexpr int64_t kMost = std::numeric_limits<int64_t>::max();

TEST(Media, PrimitivesAreBigEndianAndMoveTheCursor) {
    COwnedMemoryMedia media;
    media.WriteU8(0x1FE);
    media.WriteU16(0x1234);
    media.WriteU32(0x89ABCDEF);
    EXPECT_EQ(BytesOf(media), "\xFE\x12\x34\x89\xAB\xCD\xEF"s);
    media.SetPosition(0);
    EXPECT_EQ(media.PeekU8(), 0xFE);
    EXPECT_EQ(media.ReadU8(), 0xFEU);
    EXPECT_EQ(media.ReadU16(), 0x1234);
    EXPECT_EQ(media.ReadU32(), 0x89ABCDEFU);
    uint8_t pair[2] = {};
    CRawByteReader reader(&media);
    EXPECT_EQ(reader.Read(1, 2, pair), NSLichen::kByteStreamStatus_OK);
    EXPECT_EQ(reader.Read(5, 0, pair), NSLichen::kByteStreamStatus_OK);
    EXPECT_EQ(media.GetPosition(), 3);
    // What an owned array grows by is zero.
    media.WriteAt(9, 2, pair);
    EXPECT_EQ(BytesOf(media), "\xFE\x12\x34\x89\xAB\xCD\xEF\0\0\x12\x34"s);
    // A cursor outside the media has nothing left to read, on either side.
    for (const int64_t position : {int64_t{-1}, int64_t{11}, -kMost - 1, kMost}) {
        media.SetPosition(position);
        EXPECT_EQ(media.BytesLeft(), 0) << position;
    }
}

template <class Media>
class MemoryMedia : public testing::Test {};
using MemoryMediaTypes = testing::Types<CMemoryMedia, COwnedMemoryMedia>;
TYPED_TEST_SUITE(MemoryMedia, MemoryMediaTypes, );

TYPED_TEST(MemoryMedia, GrowsByTheRule) {
    // Capacity, bytes needed, new capacity: half as much again as is missing, at least a quarter
    // where that is above 99, at least 100.
    const int64_t table[][3] = {{0, 1, 100},     {100, 100, 100}, {100, 101, 200},
                                {399, 400, 499}, {404, 405, 505}, {1000, 2000, 2500},
                                {0, 67, 100},    {0, 69, 103}};
    for (const auto& [capacity, needed, grown] : table) {
        TypeParam media(capacity);
        EXPECT_EQ(media.GetLength(), 0);
        media.SetPosition(needed - 1);
        media.WriteU8(1);
        EXPECT_EQ(media.GetCapacity(), grown) << capacity << " to " << needed;
        EXPECT_EQ(media.GetLength(), needed);
    }
}

TYPED_TEST(MemoryMedia, KeepsBytesWhenGrownOrCopied) {
    TypeParam media(int64_t{4});
    media.WriteU32(0x01020304);
    const uint8_t* start = media.GetWritableBuffer(200);
    EXPECT_EQ(start, media.GetData());
    EXPECT_EQ(BytesOf(media).substr(0, 4), "\1\2\3\4");
    media.SetPosition(-1);
    EXPECT_THROW(media.WriteU8(0), std::out_of_range);
    media.SetPosition(kMost);
    EXPECT_THROW(media.WriteU8(0), std::bad_alloc);
    EXPECT_EQ(media.GetLength(), 204);
    TypeParam copy(static_cast<const CMedia&>(media));
    EXPECT_EQ(copy.GetPosition(), kMost);
    EXPECT_EQ(BytesOf(TypeParam(copy)), BytesOf(media));
    // From the media's own block, while that is replaced and where both runs overlap.
    copy.WriteAt(copy.GetCapacity(), 4, copy.GetData());
    copy.WriteAt(1, 3, copy.GetData());
    EXPECT_EQ(BytesOf(copy).substr(0, 4), "\1\1\2\3");
    EXPECT_TRUE(BytesOf(copy).ends_with("\1\2\3\4"));
}

TEST(CMemoryMedia, BorrowedBlocksAreNeverReplaced) {
    std::string text = "abcd";
    CMemoryMedia writable(4, reinterpret_cast<uint8_t*>(text.data()));
    writable.WriteU32(0x41424344);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, writable.WriteU8(1));
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, writable.GetWritableBuffer(1));
    CMemoryMedia readable = MediaOf(text);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, readable.WriteU8(1));
    EXPECT_EQ(text, "ABCD");
}

TEST(Media, CopyFromMovesBothCursors) {
    const uint8_t text[] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'};
    COwnedMemoryMedia source(sizeof text, text);
    source.SetPosition(1);
    COwnedMemoryMedia target;
    target.CopyFrom(4, source, 3);
    target.CopyFrom(3, source, 100);
    EXPECT_EQ(BytesOf(target), "1234567");
    EXPECT_TRUE(source.GetPosition() == 8 && target.GetPosition() == 7);
    EXPECT_THROW(target.CopyFrom(1, source, 0), std::invalid_argument);
}

TEST(CPartialMedia, ReadOnlyViewGuardsItsEnds) {
    const std::string text = "0123456789";
    CMemoryMedia parent = MediaOf(text);
    parent.SetPosition(4);
    CPartialMedia view(&parent, 4, 3);
    EXPECT_EQ(view.GetLength(), 3);
    EXPECT_EQ(view.ReadU16(), 0x3435);
    uint8_t bytes[8] = {};
    const int64_t outside[][2] = {{0, 4},  {3, 1},  {4, 0},     {-4, 4},
                                  {-1, 0}, {1, -1}, {1, kMost}, {kMost, 1}};
    for (const auto& [position, count] : outside) {
        EXPECT_RAISES(NSLichen::XRead, view.ReadBytes(position, count, bytes));
    }
    EXPECT_RAISES(NSLichen::XRead, view.ReadU32());
    EXPECT_EQ(view.GetPosition(), 2);
    EXPECT_EQ(parent.GetPosition(), 4);
    EXPECT_RAISES(NSLichen::XIllegalCallSequence, view.WriteU8(1));
    parent.SetPosition(6); // off the view's start, before it or behind it
    EXPECT_EQ(CPartialMedia(&parent, 4, 3).GetPosition(), 2);
    EXPECT_EQ(CPartialMedia(&parent, 7).GetPosition(), -1);
    CPartialMedia empty(&parent, 4, 0);
    empty.ReadBytes(0, 0, bytes);
    EXPECT_RAISES(NSLichen::XRead, empty.ReadBytes(0, 1, bytes));
}

TEST(CPartialMedia, WritableViewFollowsItsParent) {
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
    outer.SetPosition(kMost);
    EXPECT_THROW(outer.WriteU8(0), std::out_of_range);
}

} // namespace NSPorter

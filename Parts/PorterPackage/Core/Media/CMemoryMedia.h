// A media over one block of memory, its own or the caller's.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <memory>

namespace NSPorter {

constexpr int32_t kBlockOwnership_Owned = 69;
constexpr int32_t kBlockOwnership_Borrowed = 70;
constexpr int32_t kBlockOwnership_BorrowedConst = 71;

/// Reads are unchecked copies: asking for bytes outside the block is the caller's fault. Reads and
/// writes of 0 bytes or less do nothing. Only an owned block grows; a write beyond a borrowed
/// block, or any write to a const one, raises XIllegalCallSequence. A write that begins below zero
/// raises XStdOutOfRange, one that no memory can hold std::bad_alloc.
class CMemoryMedia : public CMedia {
public:
    /// Copies all bytes and the cursor of the source into a block of its own.
    explicit CMemoryMedia(const CMedia& source);
    CMemoryMedia(const CMemoryMedia& source);
    /// Owned, with length 0.
    explicit CMemoryMedia(int64_t capacity);
    /// Borrows the block, which must outlive the media.
    CMemoryMedia(int64_t size, uint8_t* data);
    CMemoryMedia(int64_t size, const uint8_t* data);
    CMemoryMedia& operator=(const CMemoryMedia&) = delete;
    ~CMemoryMedia() override;

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    /// The source may lie in the media's own block. A gap between the old length and the position
    /// holds whatever the allocator gave.
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override { return fLength; }

    const uint8_t* GetData() const { return fData; }
    int64_t GetCapacity() const { return fCapacity; }
    /// Makes sure that `count` bytes exist at the cursor. The result is the start of the block, not
    /// of those bytes, and holds until the media grows again.
    uint8_t* GetWritableBuffer(int64_t count);

private:
    /// Answers the block that was replaced, if any: the bytes to be written may lie in it.
    std::unique_ptr<uint8_t[]> GrowTo(int64_t needed);

    int32_t fOwnership;
    /// Allocated by new[] and freed here when the ownership says so, otherwise borrowed.
    uint8_t* fData;
    int64_t fCapacity;
    int64_t fLength;
};

} // namespace NSPorter

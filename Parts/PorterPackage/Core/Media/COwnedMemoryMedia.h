// A media that owns a growable array of bytes and fills with zeros what it grows by.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <vector>

namespace NSPorter {

/// Reads are unchecked copies and writes raise what they raise in an owned CMemoryMedia; both do
/// nothing for 0 bytes or less.
class COwnedMemoryMedia : public CMedia {
public:
    COwnedMemoryMedia() = default;
    /// Copies all bytes and the cursor of the source.
    explicit COwnedMemoryMedia(const CMedia& source);
    COwnedMemoryMedia(const COwnedMemoryMedia& source) = default;
    /// Length 0.
    explicit COwnedMemoryMedia(int64_t capacity);
    /// Copies the bytes.
    COwnedMemoryMedia(int64_t size, const uint8_t* data);
    COwnedMemoryMedia& operator=(const COwnedMemoryMedia&) = delete;

    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override { return static_cast<int64_t>(fBytes.size()); }

    const uint8_t* GetData() const { return fBytes.data(); }
    int64_t GetCapacity() const { return static_cast<int64_t>(fBytes.capacity()); }
    /// Makes sure that `count` bytes exist at the cursor. The result is the start of the array, not
    /// of those bytes, and holds until the media grows again.
    uint8_t* GetWritableBuffer(int64_t count);

private:
    /// Answers the array that was replaced, if any: the bytes to be written may lie in it.
    std::vector<uint8_t> GrowTo(int64_t needed);

    std::vector<uint8_t> fBytes;
};

} // namespace NSPorter

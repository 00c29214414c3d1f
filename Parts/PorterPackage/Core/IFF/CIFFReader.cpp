#include "PorterPackage/Core/IFF/CIFFReader.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <algorithm>
#include <array>

namespace NSPorter {

namespace {

// Group id, size and type.
constexpr int64_t kGroupHeaderSize = 12;
constexpr int64_t kChunkHeaderSize = 8;

} // namespace

CIFFReader::CIFFReader(CMedia* media, uint32_t groupID) : fGroupID(groupID), fMedia(media) {}

CIFFReader::~CIFFReader() = default;

bool CIFFReader::FindChunk(uint32_t id, uint32_t& size) {
    fMedia->SetPosition(0);
    CheckFormat(fMedia->GetLength() >= kGroupHeaderSize);
    const uint32_t groupID = fMedia->ReadU32();
    const uint32_t groupSize = ReadSize();
    fMedia->Skip(4);
    CheckFormat(groupID == fGroupID && groupSize >= 4);
    const int64_t end = std::min(int64_t{groupSize} + kChunkHeaderSize, fMedia->GetLength());

    int64_t position = kGroupHeaderSize;
    uint32_t foundID = 0;
    uint32_t foundSize = 0;
    ReadChunkHeader(foundID, foundSize);
    while (foundID != id) {
        // In 32 bits, as files near the limits of the format have always been read. A step that
        // wraps to nothing or is negative would never reach the end.
        const uint32_t step = foundSize + uint32_t{kChunkHeaderSize};
        if (step == 0 || step > 0x7FFFFFFF) {
            return false;
        }
        position += step;
        if (fPadded && (foundSize & 1) != 0) {
            ++position;
        }
        if (position + kChunkHeaderSize >= end) {
            return false;
        }
        fMedia->SetPosition(position);
        ReadChunkHeader(foundID, foundSize);
    }
    size = foundSize;
    return true;
}

bool CIFFReader::ReadChunkAt(uint32_t id, uint8_t* destination, int64_t offset, int64_t count) {
    uint32_t size = 0;
    if (!FindChunk(id, size)) {
        return false;
    }
    const int64_t left = fMedia->BytesLeft();
    CheckFormat(offset >= 0 && count >= 0 && offset <= left && count <= left - offset);
    fMedia->Skip(offset);
    fMedia->Read(count, destination);
    return true;
}

void CIFFReader::ReadChunkHeader(uint32_t& id, uint32_t& size) {
    CheckFormat(fMedia->BytesLeft() >= kChunkHeaderSize);
    id = fMedia->ReadU32();
    size = ReadSize();
}

uint32_t CIFFReader::ReadSize() {
    std::array<uint8_t, 4> bytes{};
    fMedia->Read(4, bytes.data());
    return fNativeSizes ? DecodeNative(bytes.data()) : DecodeBigEndian(bytes.data());
}

} // namespace NSPorter

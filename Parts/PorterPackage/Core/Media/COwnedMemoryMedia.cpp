#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include "PorterPackage/Core/Media/MediaGrowth.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace NSPorter {

COwnedMemoryMedia::COwnedMemoryMedia(const CMedia& source)
    : CMedia(source), fBytes(static_cast<size_t>(source.GetLength())) {
    source.ReadBytes(0, source.GetLength(), fBytes.data());
}

COwnedMemoryMedia::COwnedMemoryMedia(int64_t capacity) {
    fBytes.reserve(static_cast<size_t>(capacity));
}

COwnedMemoryMedia::COwnedMemoryMedia(int64_t size, const uint8_t* data)
    : fBytes(data, data + size) {}

void COwnedMemoryMedia::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    if (count > 0) {
        std::memcpy(destination, fBytes.data() + position, static_cast<size_t>(count));
    }
}

void COwnedMemoryMedia::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    if (count > 0) {
        const std::vector<uint8_t> replaced = GrowTo(EndOfRun(position, count));
        std::memmove(fBytes.data() + position, source, static_cast<size_t>(count));
    }
}

uint8_t* COwnedMemoryMedia::GetWritableBuffer(int64_t count) {
    GrowTo(EndOfRun(GetPosition(), std::max<int64_t>(count, 0)));
    return fBytes.data();
}

std::vector<uint8_t> COwnedMemoryMedia::GrowTo(int64_t needed) {
    std::vector<uint8_t> replaced;
    if (needed > GetCapacity()) {
        std::vector<uint8_t> grown;
        grown.reserve(static_cast<size_t>(GrownCapacity(GetCapacity(), needed)));
        grown.assign(fBytes.begin(), fBytes.end());
        replaced = std::exchange(fBytes, std::move(grown));
    }
    if (needed > GetLength()) {
        fBytes.resize(static_cast<size_t>(needed));
    }
    return replaced;
}

} // namespace NSPorter

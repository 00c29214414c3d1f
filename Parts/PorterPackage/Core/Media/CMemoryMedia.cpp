#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Media/MediaGrowth.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace NSPorter {

namespace {

uint8_t* AllocateBlock(int64_t size) {
    return new uint8_t[static_cast<size_t>(size)];
}

} // namespace

CMemoryMedia::CMemoryMedia(const CMedia& source)
    : CMedia(source), fOwnership(kBlockOwnership_Owned), fData(nullptr),
      fCapacity(source.GetLength()), fLength(fCapacity) {
    std::unique_ptr<uint8_t[]> block(AllocateBlock(fCapacity));
    source.ReadBytes(0, fLength, block.get());
    fData = block.release();
}

CMemoryMedia::CMemoryMedia(const CMemoryMedia& source)
    : CMemoryMedia(static_cast<const CMedia&>(source)) {}

CMemoryMedia::CMemoryMedia(int64_t capacity)
    : fOwnership(kBlockOwnership_Owned), fData(AllocateBlock(capacity)), fCapacity(capacity),
      fLength(0) {}

CMemoryMedia::CMemoryMedia(int64_t size, uint8_t* data)
    : fOwnership(kBlockOwnership_Borrowed), fData(data), fCapacity(size), fLength(size) {}

CMemoryMedia::CMemoryMedia(int64_t size, const uint8_t* data)
    // The ownership keeps every write away from it.
    : fOwnership(kBlockOwnership_BorrowedConst), fData(const_cast<uint8_t*>(data)), fCapacity(size),
      fLength(size) {}

CMemoryMedia::~CMemoryMedia() {
    if (fOwnership == kBlockOwnership_Owned) {
        delete[] fData;
    }
}

void CMemoryMedia::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    if (count > 0) {
        std::memcpy(destination, fData + position, static_cast<size_t>(count));
    }
}

void CMemoryMedia::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    if (count > 0) {
        const int64_t end = EndOfRun(position, count);
        const std::unique_ptr<uint8_t[]> replaced = GrowTo(end);
        std::memmove(fData + position, source, static_cast<size_t>(count));
        fLength = std::max(fLength, end);
    }
}

uint8_t* CMemoryMedia::GetWritableBuffer(int64_t count) {
    const int64_t end = EndOfRun(GetPosition(), std::max<int64_t>(count, 0));
    GrowTo(end);
    fLength = std::max(fLength, end);
    return fData;
}

std::unique_ptr<uint8_t[]> CMemoryMedia::GrowTo(int64_t needed) {
    if (fOwnership == kBlockOwnership_BorrowedConst ||
        (fOwnership == kBlockOwnership_Borrowed && needed > fCapacity)) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
    }
    if (needed <= fCapacity) {
        return nullptr;
    }
    const int64_t capacity = GrownCapacity(fCapacity, needed);
    uint8_t* block = AllocateBlock(capacity);
    std::copy_n(fData, fLength, block);
    std::unique_ptr<uint8_t[]> replaced(std::exchange(fData, block));
    fCapacity = capacity;
    return replaced;
}

} // namespace NSPorter

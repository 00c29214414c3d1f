#include "Fuzz/EditedFile.h"

#include "Fuzz/HostContract.h"

namespace {

using NSLoopWriter::SIFFChunk;

constexpr size_t kMostGrowth = 300;

// Any chunk below the root; null when there is none.
SIFFChunk* PickChunk(SIFFChunk& root, CByteSource& source) {
    if (root.fChildren.empty()) {
        return nullptr;
    }
    SIFFChunk& child = root.fChildren[source.Below(static_cast<uint32_t>(root.fChildren.size()))];
    const bool deeper = !child.fChildren.empty() && source.Byte() % 4 != 0;
    return deeper ? PickChunk(child, source) : &child;
}

void OverwriteBytes(SIFFChunk& chunk, CByteSource& source) {
    const uint32_t width = source.Byte() % 4 + 1u;
    const size_t offset = source.Word(2);
    for (uint32_t i = 0; i < width; ++i) {
        const uint8_t value = source.Byte();
        if (offset + i < chunk.fBody.size()) {
            chunk.fBody[offset + i] = value;
        }
    }
}

void EditOnce(SIFFChunk& root, CByteSource& source) {
    const uint8_t kind = source.Byte();
    SIFFChunk* const chunk = PickChunk(root, source);
    if (chunk == nullptr) {
        return;
    }
    switch (kind % 12) {
    case 0:
        chunk->fBody.resize(std::min<size_t>(chunk->fBody.size(), source.Word(2)));
        break;
    case 1:
        chunk->fBody.resize(chunk->fBody.size() + source.Below(kMostGrowth), source.Byte());
        break;
    case 2:
        NSLoopWriter::LeaveOutChunk(root, chunk->fID);
        break;
    case 3:
        NSLoopWriter::DuplicateChunk(root, chunk->fID);
        break;
    case 4:
        NSLoopWriter::MoveChunk(root, chunk->fID, source.Byte());
        break;
    case 5:
        chunk->fID = source.Word(4);
        break;
    case 6:
        chunk->fStoredSize = source.Word(4);
        break;
    default:
        OverwriteBytes(*chunk, source);
        break;
    }
}

} // namespace

void EditChunks(SIFFChunk& root, CByteSource& source) {
    for (int edits = source.Byte() % 16; edits > 0; --edits) {
        EditOnce(root, source);
    }
}

void CheckEditedFile(SIFFChunk base, std::vector<uint8_t> (*write)(const SIFFChunk&),
                     CByteSource& source) {
    EditChunks(base, source);
    CheckHostContract(write(base), source);
}

#include "Fuzz/HostContract.h"
#include "LoopWriter/DrumFiles.h"

// Edits of a valid file of each kind, then used as a host would. The bytes become changes of the
// file's chunks, so that an input stays near what a loader accepts, whatever the fuzzer does to it.

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
    const uint8_t edit = source.Byte();
    SIFFChunk* const chunk = PickChunk(root, source);
    if (chunk == nullptr) {
        return;
    }
    switch (edit % 12) {
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

// The first byte is the kind of file and its audio, the second counts the edits.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    const uint8_t form = source.Byte();
    const bool isLOP2 = form % 3 == 0;
    NSLoopWriter::SDrumLoopOptions options;
    // Short audio keeps an input quick.
    options.fSampleRate = 11025;
    options.fBeats = 1;
    options.fStereo = (form & 0x40) != 0;
    options.fBitDepth = (form & 0x80) != 0 ? 24 : 16;
    SIFFChunk root = isLOP2          ? BuildLOP2Chunks(MakeDrumLOP2(options))
                     : form % 3 == 1 ? BuildTSLChunks(MakeDrumTSL(options))
                                     : BuildLOPChunks(MakeDrumLOP(options));
    for (int edits = source.Byte() % 16; edits > 0; --edits) {
        EditOnce(root, source);
    }
    CheckHostContract(isLOP2 ? WriteNestedTree(root) : WriteFlatTree(root), source);
    return 0;
}

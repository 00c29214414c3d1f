#include "LoopWriter/IFFChunkTree.h"

#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/IFF/CIFFFileWriter.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"
#include "PorterPackage/Core/IFF/IFFGroupWords.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace NSLoopWriter {

namespace {

struct SPlace {
    SIFFChunk* fGroup;
    size_t fIndex;
};

std::optional<SPlace> FindPlace(SIFFChunk& group, uint32_t id) {
    for (size_t i = 0; i < group.fChildren.size(); ++i) {
        if (group.fChildren[i].fID == id) {
            return SPlace{&group, i};
        }
        if (const std::optional<SPlace> below = FindPlace(group.fChildren[i], id)) {
            return below;
        }
    }
    return std::nullopt;
}

SPlace GetPlace(SIFFChunk& root, uint32_t id) {
    const std::optional<SPlace> place = FindPlace(root, id);
    if (!place) {
        NSLichen::Raise(std::out_of_range("no such chunk"));
    }
    return *place;
}

void InsertAt(std::vector<SIFFChunk>& chunks, size_t index, SIFFChunk chunk) {
    const auto place = std::min(index, chunks.size());
    chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(place), std::move(chunk));
}

void EraseAt(const SPlace& place) {
    std::vector<SIFFChunk>& chunks = place.fGroup->fChildren;
    chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(place.fIndex));
}

uint32_t GroupWord(SIFFChunk::EKind kind) {
    switch (kind) {
    case SIFFChunk::EKind::kForm:
        return NSPorter::kIFFWord_Form;
    case SIFFChunk::EKind::kCat:
        return NSPorter::kIFFWord_Cat;
    default:
        return NSPorter::kIFFWord_List;
    }
}

void WriteBytes(NSPorter::CMedia& media, const std::vector<uint8_t>& bytes) {
    media.Write(static_cast<int64_t>(bytes.size()), bytes.data());
}

size_t TrueSize(const SIFFChunk& chunk) {
    if (chunk.fKind == SIFFChunk::EKind::kSimple) {
        return chunk.fBody.size();
    }
    size_t size = 0;
    for (const SIFFChunk& child : chunk.fChildren) {
        size += 8 + TrueSize(child);
        size += size & 1;
    }
    return size + 4;
}

// Replaces the true sizes by those that the tree states, for the chunk written at
// `offset` and all below it. The result is where the next chunk stands.
size_t OverrideSizes(std::vector<uint8_t>& bytes, size_t offset, const SIFFChunk& chunk) {
    size_t child = offset + 12;
    for (const SIFFChunk& next : chunk.fChildren) {
        child = OverrideSizes(bytes, child, next);
    }
    if (chunk.fStoredSize) {
        NSPorter::EncodeBigEndian(*chunk.fStoredSize, &bytes[offset + 4]);
    }
    const size_t end = offset + 8 + TrueSize(chunk);
    return end + (end & 1);
}

std::vector<uint8_t> Finished(const NSPorter::COwnedMemoryMedia& media, const SIFFChunk& root) {
    std::vector<uint8_t> bytes(media.GetData(), media.GetData() + media.GetLength());
    OverrideSizes(bytes, 0, root);
    return bytes;
}

void WriteNested(NSPorter::CIFFFileWriter& writer, const SIFFChunk& chunk) {
    if (chunk.fKind == SIFFChunk::EKind::kSimple) {
        writer.EnterChunk(chunk.fID);
        WriteBytes(*writer.GetMedia(), chunk.fBody);
    } else {
        writer.EnterGroup(GroupWord(chunk.fKind), chunk.fID);
        for (const SIFFChunk& child : chunk.fChildren) {
            WriteNested(writer, child);
        }
    }
    writer.Leave();
}

} // namespace

SIFFChunk MakeSimpleChunk(uint32_t id, std::vector<uint8_t> body) {
    SIFFChunk chunk;
    chunk.fID = id;
    chunk.fBody = std::move(body);
    return chunk;
}

SIFFChunk MakeGroup(SIFFChunk::EKind kind, uint32_t id, std::vector<SIFFChunk> children) {
    SIFFChunk chunk;
    chunk.fKind = kind;
    chunk.fID = id;
    chunk.fChildren = std::move(children);
    return chunk;
}

SIFFChunk& FindChunk(SIFFChunk& root, uint32_t id) {
    const SPlace place = GetPlace(root, id);
    return place.fGroup->fChildren[place.fIndex];
}

void LeaveOutChunk(SIFFChunk& root, uint32_t id) {
    EraseAt(GetPlace(root, id));
}

void DuplicateChunk(SIFFChunk& root, uint32_t id) {
    const SPlace place = GetPlace(root, id);
    InsertAt(place.fGroup->fChildren, place.fIndex + 1, place.fGroup->fChildren[place.fIndex]);
}

void MoveChunk(SIFFChunk& root, uint32_t id, size_t index) {
    const SPlace place = GetPlace(root, id);
    SIFFChunk chunk = std::move(place.fGroup->fChildren[place.fIndex]);
    EraseAt(place);
    InsertAt(place.fGroup->fChildren, index, std::move(chunk));
}

void TruncateChunk(SIFFChunk& root, uint32_t id, size_t byteCount) {
    SIFFChunk& chunk = FindChunk(root, id);
    chunk.fBody.resize(std::min(chunk.fBody.size(), byteCount));
}

void InsertChunk(SIFFChunk& root, uint32_t groupID, size_t index, SIFFChunk chunk) {
    SIFFChunk& group = root.fID == groupID ? root : FindChunk(root, groupID);
    InsertAt(group.fChildren, index, std::move(chunk));
}

std::vector<uint8_t> WriteNestedTree(const SIFFChunk& root) {
    NSPorter::COwnedMemoryMedia media;
    NSPorter::CIFFFileWriter writer(&media, NSPorter::kIFFMode_BigEndian);
    WriteNested(writer, root);
    return Finished(media, root);
}

std::vector<uint8_t> WriteFlatTree(const SIFFChunk& root) {
    const auto isSimple = [](const SIFFChunk& chunk) {
        return chunk.fKind == SIFFChunk::EKind::kSimple;
    };
    if (root.fKind != SIFFChunk::EKind::kForm ||
        !std::all_of(root.fChildren.begin(), root.fChildren.end(), isSimple)) {
        NSLichen::Raise(std::invalid_argument("not a flat file"));
    }
    NSPorter::COwnedMemoryMedia media;
    NSPorter::CIFFWriter writer(&media);
    writer.BeginGroup(NSPorter::kIFFWord_Form, root.fID);
    for (const SIFFChunk& chunk : root.fChildren) {
        writer.WriteChunk(chunk.fID, chunk.fBody.data(), static_cast<int64_t>(chunk.fBody.size()));
    }
    writer.EndGroup();
    return Finished(media, root);
}

std::vector<uint8_t> WriteEditedTree(SIFFChunk root, const ChunkEdit& edit,
                                     std::vector<uint8_t> (*write)(const SIFFChunk&)) {
    if (edit) {
        edit(root);
    }
    return write(root);
}

} // namespace NSLoopWriter

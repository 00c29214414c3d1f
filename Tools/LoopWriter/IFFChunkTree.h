#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace NSLoopWriter {

/// A chunk or group before it is written. A tree of these is what every writer of this folder
/// makes first, so that a caller can leave out, repeat, move, cut or add chunks with plain vector
/// operations or the functions below.
struct SIFFChunk {
    enum class EKind { kSimple, kForm, kCat, kList };

    EKind fKind = EKind::kSimple;
    uint32_t fID = 0;                 // of a group: the type id
    std::vector<uint8_t> fBody;       // of a simple chunk
    std::vector<SIFFChunk> fChildren; // of a group
    /// Replaces the true size once everything is written; nothing else changes.
    std::optional<uint32_t> fStoredSize;
};

SIFFChunk MakeSimpleChunk(uint32_t id, std::vector<uint8_t> body);
SIFFChunk MakeGroup(SIFFChunk::EKind kind, uint32_t id, std::vector<SIFFChunk> children);

/// A change of the tree just before it is written; none if empty.
using ChunkEdit = std::function<void(SIFFChunk& root)>;

/// The first chunk or group with that id below `root`, depth first. Throws `std::out_of_range` if
/// there is none, here and below: a test that edits a chunk which is not there is at fault.
SIFFChunk& FindChunk(SIFFChunk& root, uint32_t id);
/// Removes the first such chunk.
void LeaveOutChunk(SIFFChunk& root, uint32_t id);
/// Puts a copy behind the first such chunk.
void DuplicateChunk(SIFFChunk& root, uint32_t id);
/// Moves the first such chunk to `index` among its siblings (counted without it), to the end if
/// the index is beyond them.
void MoveChunk(SIFFChunk& root, uint32_t id, size_t index);
/// Cuts the body of the first such chunk to at most `byteCount` bytes.
void TruncateChunk(SIFFChunk& root, uint32_t id, size_t byteCount);
/// Inserts `chunk` at `index` among the children of the group `groupID` (the root counts too), at
/// the end if the index is beyond them.
void InsertChunk(SIFFChunk& root, uint32_t groupID, size_t index, SIFFChunk chunk);

/// A whole file with `root`, a group, at its start: nested groups by the nesting writer, padding by
/// absolute position.
std::vector<uint8_t> WriteNestedTree(const SIFFChunk& root);

/// A whole file of one `FORM` with simple chunks in it, by the flat writer. Throws
/// `std::invalid_argument` for a tree of another shape.
std::vector<uint8_t> WriteFlatTree(const SIFFChunk& root);

/// A tree that `edit` changes first, if there is one, written by one of the two above.
std::vector<uint8_t> WriteEditedTree(SIFFChunk root, const ChunkEdit& edit,
                                     std::vector<uint8_t> (*write)(const SIFFChunk&));

} // namespace NSLoopWriter

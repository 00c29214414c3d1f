// Where a chunk lies and what it is.
#pragma once

#include <cstdint>

namespace NSPorter {

constexpr int32_t kIFFKind_None = -1;
constexpr int32_t kIFFKind_Chunk = 0;
/// FORM, and RIFF in RIFF files.
constexpr int32_t kIFFKind_Form = 1;
constexpr int32_t kIFFKind_Cat = 2;
constexpr int32_t kIFFKind_List = 3;
/// A group with an outer id of its own. Nothing here reads or writes one.
constexpr int32_t kIFFKind_Other = 4;

/// Sizes are in bytes. Neither of the first two accepts a kind outside 0 to 4: that raises
/// XStdException.
struct CIFFChunkHeader {
    int64_t GetHeaderSize() const;
    /// A group that is too short for its type raises XFormatViolation.
    int64_t GetDataSize() const;
    /// The pad byte behind an odd chunk is not counted.
    int64_t GetTotalSize() const { return fSize + 8; }

    int32_t fKind = kIFFKind_None;
    /// The outer id of a group of kind 4, otherwise 0.
    uint32_t fFormat = 0;
    /// For a group its type, not the word that makes it a group.
    uint32_t fID = 0;
    /// Of the chunk's first id byte in the media of its level.
    int64_t fOffset = 0;
    /// The size field's value; in a group it counts the four bytes of the type.
    int64_t fSize = 0;
};

} // namespace NSPorter

// Reads one level of a nested IFF file.
#pragma once

#include "PorterPackage/Core/IFF/CIFFChunkHeader.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <memory>

namespace NSPorter {

/// Every structural fault raises XFormatViolation with an empty text: the caller knows the context.
/// A malformed chunk fails each search that comes across it, even if the chunk sought lies behind.
class CIFFReader2 {
public:
    /// The root level, over a borrowed media. The mode says how sizes are stored, see IFFSizes.h.
    CIFFReader2(CMedia* media, int32_t mode);
    /// A level inside the chunk of `header`, over a view of exactly the chunk's data. Borrows the
    /// parent, which must outlive it.
    CIFFReader2(CIFFReader2* parent, const CIFFChunkHeader& header);
    CIFFReader2(const CIFFReader2&) = delete;
    CIFFReader2& operator=(const CIFFReader2&) = delete;
    virtual ~CIFFReader2();

    /// Reads the header at the cursor and leaves the cursor behind it. The chunk's size must fit
    /// into this level.
    virtual void ReadHeader(CIFFChunkHeader& header);

    /// False in a media that is too short for any header.
    bool ReadFirstHeader(CIFFChunkHeader& header);
    /// The chunk behind `header`, with the padding to even offsets; false at the end.
    bool ReadNextHeader(const CIFFChunkHeader& header, CIFFChunkHeader& next);

    /// The first chunk of that kind and id in this level; false if there is none.
    bool FindChunk(uint32_t id, CIFFChunkHeader& header);
    bool FindForm(uint32_t type, CIFFChunkHeader& header);
    bool FindCat(uint32_t type, CIFFChunkHeader& header);
    bool FindList(uint32_t type, CIFFChunkHeader& header);
    /// As the four above, with the kind as an argument.
    bool FindOfKind(int32_t kind, uint32_t id, CIFFChunkHeader& header);

    /// Chunks of any kind in this level. The cursor comes back to where it was.
    int64_t CountChunks();

    /// A read-only view of the chunk's data with its cursor at 0, good while this reader's media
    /// is.
    std::unique_ptr<CMedia> MakeChildMedia(const CIFFChunkHeader& header);
    /// The destination takes the chunk's data size.
    void ReadChunkData(const CIFFChunkHeader& header, uint8_t* destination);
    /// Null if the chunk is absent.
    std::unique_ptr<CMedia> OpenChunk(uint32_t id);
    /// An absent chunk is a fault here.
    void ReadChunk(uint32_t id, uint8_t* destination);

    CMedia* GetMedia() const { return fMedia; }
    /// Of the chunk that this reader reads inside; of kind -1 at the root.
    const CIFFChunkHeader& GetHeader() const { return fHeader; }

protected:
    /// A root reader of sizes that are stored in some other way.
    CIFFReader2(CMedia* media, IFFSizeDecoder sizeDecoder);

    /// ReadHeader for files whose groups of kind 1 begin with `formWord`.
    void ReadHeaderOf(uint32_t formWord, CIFFChunkHeader& header);

private:
    /// Borrowed; null at the root.
    CIFFReader2* fParent;
    /// Null at the root, whose media belongs to the caller.
    std::unique_ptr<CMedia> fChildMedia;
    CMedia* fMedia;
    CIFFChunkHeader fHeader;
    IFFSizeDecoder fSizeDecoder;
};

/// True for a media that starts with a group which it holds whole. Never throws; the cursor comes
/// back to where it was.
bool IsIFFMedia(CMedia& media, int32_t mode) noexcept;

} // namespace NSPorter

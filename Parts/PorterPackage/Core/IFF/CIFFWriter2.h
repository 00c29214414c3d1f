// Writes one level of a nested IFF file.
#pragma once

#include "PorterPackage/Core/IFF/CIFFChunkHeader.h"
#include "PorterPackage/Core/IFF/IFFSizes.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <memory>

namespace NSPorter {

/// Begin writes a header with a size of 0, which End fills in. Each operation that writes into a
/// child media moves the parent's cursor along.
class CIFFWriter2 {
public:
    /// The root level, over a borrowed media. The mode says how sizes are stored, see IFFSizes.h.
    CIFFWriter2(CMedia* media, int32_t mode);
    /// A level inside the chunk that was begun with `header`. Borrows the parent, which must
    /// outlive it.
    CIFFWriter2(CIFFWriter2* parent, const CIFFChunkHeader& header);
    CIFFWriter2(const CIFFWriter2&) = delete;
    CIFFWriter2& operator=(const CIFFWriter2&) = delete;
    virtual ~CIFFWriter2();

    void BeginCat(CIFFChunkHeader& header, uint32_t type);
    void BeginForm(CIFFChunkHeader& header, uint32_t type);
    void BeginList(CIFFChunkHeader& header, uint32_t type);
    /// A group that begins with any word, such as RIFF. Words other than "CAT " and "LIST" make a
    /// group of kind 1.
    void BeginGroup(CIFFChunkHeader& header, uint32_t word, uint32_t type);
    void BeginChunk(CIFFChunkHeader& header, uint32_t id);

    /// Ends a chunk or group whose data, the type of a group not counted, takes `dataSize` bytes,
    /// and leaves the cursor behind it. A pad byte follows wherever the end lies at an odd position
    /// of this level's media. A size beyond 32 bits raises XStdLengthError.
    void EndChunk(const CIFFChunkHeader& header, int64_t dataSize);

    /// A whole simple chunk. The result is the bytes it takes, with its header and any pad byte.
    int64_t WriteChunk(uint32_t id, int64_t count, const uint8_t* data);

    CMedia* GetMedia() const { return fMedia; }
    /// Of the chunk that this writer writes inside; of kind -1 at the root.
    const CIFFChunkHeader& GetHeader() const { return fHeader; }

protected:
    /// A root writer that stores sizes in some other way.
    CIFFWriter2(CMedia* media, IFFSizeEncoder sizeEncoder);

private:
    void WriteSize(uint32_t size);

    /// Borrowed; null at the root.
    CIFFWriter2* fParent;
    /// Null at the root, whose media belongs to the caller.
    std::unique_ptr<CMedia> fChildMedia;
    CMedia* fMedia;
    CIFFChunkHeader fHeader;
    IFFSizeEncoder fSizeEncoder;
};

} // namespace NSPorter

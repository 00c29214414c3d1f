// Reads a nested IFF file as a stack of levels.
#pragma once

#include "PorterPackage/Core/IFF/CIFFReader2.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <memory>
#include <stack>

namespace NSPorter {

/// Each Enter opens a level whose media spans the data of the chunk entered, with its cursor at 0;
/// Leave goes back to the enclosing one. Searches start at the top of their level, so chunks may be
/// entered in any order and any number of times; a walk over all children takes EnterFirstChild and
/// EnterNextSibling instead, which do not search.
///
/// A failure leaves the stack of levels as it stood. Structural faults raise XFormatViolation with
/// an empty text. Operations that need a level and find none raise XIllegalCallSequence.
class CIFFFileReader {
public:
    /// Borrows the media. The mode says how sizes are stored, see IFFSizes.h.
    CIFFFileReader(CMedia* media, int32_t mode);
    CIFFFileReader(const CIFFFileReader&) = delete;
    CIFFFileReader& operator=(const CIFFFileReader&) = delete;
    /// Leaves all levels that are still open.
    ~CIFFFileReader();

    /// False, and no level, when the current level has no such chunk.
    bool TryEnterChunk(uint32_t id);
    bool TryEnterForm(uint32_t type);
    bool TryEnterCat(uint32_t type);
    bool TryEnterList(uint32_t type);

    /// An absent chunk is a fault.
    void EnterChunk(uint32_t id);
    void EnterForm(uint32_t type);
    void EnterCat(uint32_t type);
    void EnterList(uint32_t type);

    /// False when the current level is too short for any chunk.
    bool EnterFirstChild();
    /// Leaves the current level, and enters the chunk behind it if there is one: the answer false
    /// comes with one level less.
    bool EnterNextSibling();
    void Leave();

    /// Of the chunk entered last.
    const CIFFChunkHeader& GetHeader() const;
    int64_t GetDataSize() const;
    /// The destination takes GetDataSize() bytes.
    void ReadData(uint8_t* destination);

    /// Of the current level: the data of the chunk entered last, at the root the whole media.
    CMedia* GetMedia() const;
    int64_t CountChunks();
    /// Null if the chunk is absent. The view is good until its level is left.
    std::unique_ptr<CMedia> OpenChunk(uint32_t id);

private:
    class CIFFFileLevel {
    public:
        CIFFFileLevel(const boost::shared_ptr<CIFFReader2>& enclosing,
                      const CIFFChunkHeader& header);

        boost::shared_ptr<CIFFReader2> fEnclosing;
        boost::shared_ptr<CIFFReader2> fReader;
        CIFFChunkHeader fHeader;
    };

    bool TryEnter(int32_t kind, uint32_t id);
    void Enter(int32_t kind, uint32_t id);
    void Push(const boost::shared_ptr<CIFFReader2>& enclosing, const CIFFChunkHeader& header);
    const CIFFFileLevel& Innermost() const;

    boost::shared_ptr<CIFFReader2> fCurrent;
    std::stack<boost::shared_ptr<CIFFFileLevel>> fLevels;
};

} // namespace NSPorter

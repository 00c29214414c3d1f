// Writes a nested IFF file as a stack of levels.
#pragma once

#include "PorterPackage/Core/IFF/CIFFWriter2.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <stack>

namespace NSPorter {

/// Each Enter begins a chunk and opens a level in it; what is written to GetMedia() becomes the
/// chunk's data, and Leave ends the chunk. A chunk reaches to the end of the media, so a file is
/// written at the end of its media and not into the middle of what is there.
class CIFFFileWriter {
public:
    /// Borrows the media. The mode says how sizes are stored, see IFFSizes.h.
    CIFFFileWriter(CMedia* media, int32_t mode);
    CIFFFileWriter(const CIFFFileWriter&) = delete;
    CIFFFileWriter& operator=(const CIFFFileWriter&) = delete;
    /// Leaves all levels that are still open. A failure of the media is lost here: leave each level
    /// to hear of it.
    ~CIFFFileWriter();

    void EnterCat(uint32_t type);
    void EnterForm(uint32_t type);
    void EnterList(uint32_t type);
    /// A group that begins with any word, such as RIFF.
    void EnterGroup(uint32_t word, uint32_t type);
    void EnterChunk(uint32_t id);
    /// Raises XIllegalCallSequence when no level is open.
    void Leave();

    /// A whole simple chunk in the current level. The result is the bytes it takes.
    int64_t WriteChunk(uint32_t id, int64_t count, const uint8_t* data);

    /// Of the current level.
    CMedia* GetMedia() const;

private:
    class CIFFFileLevel {
    public:
        CIFFFileLevel(const boost::shared_ptr<CIFFWriter2>& enclosing,
                      const CIFFChunkHeader& header);

        boost::shared_ptr<CIFFWriter2> fEnclosing;
        boost::shared_ptr<CIFFWriter2> fWriter;
        CIFFChunkHeader fHeader;
    };

    void Push(const CIFFChunkHeader& header);
    void Pop();

    boost::shared_ptr<CIFFWriter2> fCurrent;
    std::stack<boost::shared_ptr<CIFFFileLevel>> fLevels;
};

} // namespace NSPorter

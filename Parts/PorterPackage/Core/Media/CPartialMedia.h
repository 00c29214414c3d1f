// A view of a part of another media.
#pragma once

#include "PorterPackage/Core/Media/CABCChildMedia.h"

namespace NSPorter {

/// Costs two pointers and two integers and copies nothing. Reads and writes leave the parent's
/// cursor alone, so several views may be used in turn. The parent is borrowed and must outlive the
/// view.
///
/// A view starts at the parent's cursor: made while that stands at the offset, it starts at 0.
class CPartialMedia : public CABCChildMedia {
public:
    /// A writable view, without a limit of its own: its length follows the parent's.
    CPartialMedia(CMedia* parent, int64_t offset);
    /// A read-only view of `size` bytes.
    CPartialMedia(CMedia* parent, int64_t offset, int64_t size);

    /// In a read-only view anything outside 0..size raises XRead.
    void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const override;
    /// In a read-only view raises XIllegalCallSequence.
    void WriteBytes(int64_t position, int64_t count, const uint8_t* source) override;
    int64_t GetLength() const override;

    void Flush(bool recursive) override;

private:
    CMedia* Parent() const;
    int64_t InParent(int64_t position) const;

    /// Exactly one of the two is set.
    CMedia* fWriteParent;
    CMedia* fReadParent;
    /// Where position 0 of this media lies in the parent.
    int64_t fOffset;
    /// -1 in a writable view.
    int64_t fLimit;
};

} // namespace NSPorter

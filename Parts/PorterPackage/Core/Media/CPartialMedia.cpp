#include "PorterPackage/Core/Media/CPartialMedia.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

namespace NSPorter {

CPartialMedia::CPartialMedia(CMedia* parent, int64_t offset)
    : fWriteParent(parent), fReadParent(nullptr), fOffset(offset), fLimit(-1) {
    SetPosition(parent->GetPosition());
    Skip(-offset);
}

CPartialMedia::CPartialMedia(CMedia* parent, int64_t offset, int64_t size)
    : fWriteParent(nullptr), fReadParent(parent), fOffset(offset), fLimit(size) {
    SetPosition(parent->GetPosition());
    Skip(-offset);
}

void CPartialMedia::ReadBytes(int64_t position, int64_t count, uint8_t* destination) const {
    const bool inside =
        position >= 0 && count >= 0 && position <= fLimit && count <= fLimit - position;
    if (fReadParent != nullptr && !inside) {
        NSLichen::Raise(NSLichen::XRead(""));
    }
    Parent()->ReadBytes(InParent(position), count, destination);
}

void CPartialMedia::WriteBytes(int64_t position, int64_t count, const uint8_t* source) {
    if (fWriteParent == nullptr) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
    }
    fWriteParent->WriteBytes(InParent(position), count, source);
}

int64_t CPartialMedia::GetLength() const {
    return fReadParent != nullptr ? fLimit : fWriteParent->GetLength() - fOffset;
}

void CPartialMedia::Flush(bool recursive) {
    CMedia* parent = Parent();
    parent->SetPosition(InParent(GetPosition()));
    if (recursive) {
        FlushIfChild(*parent, true);
    }
}

CMedia* CPartialMedia::Parent() const {
    return fReadParent != nullptr ? fReadParent : fWriteParent;
}

int64_t CPartialMedia::InParent(int64_t position) const {
    // Wraps where the cursor is anything at all; what comes out is judged by the parent.
    return static_cast<int64_t>(static_cast<uint64_t>(fOffset) + static_cast<uint64_t>(position));
}

} // namespace NSPorter

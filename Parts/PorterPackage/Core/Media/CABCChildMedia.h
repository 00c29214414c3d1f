// A media that lies inside another one.
#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

namespace NSPorter {

class CABCChildMedia : public CMedia {
public:
    /// Moves the parent's cursor to where this one stands; with `recursive`, so does every
    /// enclosing child media in turn.
    virtual void Flush(bool recursive) = 0;
};

/// A media that lies inside no other one has nobody to tell.
inline void FlushIfChild(CMedia& media, bool recursive) {
    if (auto* child = dynamic_cast<CABCChildMedia*>(&media)) {
        child->Flush(recursive);
    }
}

} // namespace NSPorter

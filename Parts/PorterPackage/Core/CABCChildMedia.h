// A media that lies inside another one.
#pragma once

#include "PorterPackage/Core/CMedia.h"

namespace NSPorter {

class CABCChildMedia : public CMedia {
public:
    // Moves the parent's cursor to where this one stands; with `recursive`, so does every enclosing
    // child media in turn.
    virtual void Flush(bool recursive) = 0;
};

} // namespace NSPorter

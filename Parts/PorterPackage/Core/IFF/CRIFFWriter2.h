// Writes one level of a RIFF file.
#pragma once

#include "PorterPackage/Core/IFF/CIFFWriter2.h"

namespace NSPorter {

/// The nesting IFF writer with little-endian sizes, on any host. The outermost group is begun with
/// BeginGroup and the word RIFF.
class CRIFFWriter2 : public CIFFWriter2 {
public:
    /// The root level, over a borrowed media.
    explicit CRIFFWriter2(CMedia* media);
    /// A level inside the chunk that was begun with `header`. Borrows the parent.
    CRIFFWriter2(CRIFFWriter2* parent, const CIFFChunkHeader& header);
    ~CRIFFWriter2() override;
};

} // namespace NSPorter

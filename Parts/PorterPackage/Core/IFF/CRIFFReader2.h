// Reads one level of a RIFF file.
#pragma once

#include "PorterPackage/Core/IFF/CIFFReader2.h"

namespace NSPorter {

/// The nesting IFF reader with little-endian sizes, on any host, and with RIFF in the place of
/// FORM: a RIFF group is of kind 1, and FORM is the id of a simple chunk.
class CRIFFReader2 : public CIFFReader2 {
public:
    /// The root level, over a borrowed media.
    explicit CRIFFReader2(CMedia* media);
    /// A level inside the chunk of `header`. Borrows the parent.
    CRIFFReader2(CRIFFReader2* parent, const CIFFChunkHeader& header);
    ~CRIFFReader2() override;

    void ReadHeader(CIFFChunkHeader& header) override;
};

} // namespace NSPorter

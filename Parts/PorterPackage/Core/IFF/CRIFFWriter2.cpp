#include "PorterPackage/Core/IFF/CRIFFWriter2.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"

namespace NSPorter {

CRIFFWriter2::CRIFFWriter2(CMedia* media) : CIFFWriter2(media, &EncodeLittleEndian) {}

CRIFFWriter2::CRIFFWriter2(CRIFFWriter2* parent, const CIFFChunkHeader& header)
    : CIFFWriter2(parent, header) {}

CRIFFWriter2::~CRIFFWriter2() = default;

} // namespace NSPorter

#include "PorterPackage/Core/IFF/CRIFFReader2.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/IFF/IFFGroupWords.h"

namespace NSPorter {

CRIFFReader2::CRIFFReader2(CMedia* media) : CIFFReader2(media, &DecodeLittleEndian) {}

CRIFFReader2::CRIFFReader2(CRIFFReader2* parent, const CIFFChunkHeader& header)
    : CIFFReader2(parent, header) {}

CRIFFReader2::~CRIFFReader2() = default;

void CRIFFReader2::ReadHeader(CIFFChunkHeader& header) {
    ReadHeaderOf(kIFFWord_Riff, header);
}

} // namespace NSPorter

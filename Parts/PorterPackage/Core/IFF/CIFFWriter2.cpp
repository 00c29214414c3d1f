#include "PorterPackage/Core/IFF/CIFFWriter2.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/IFF/IFFGroupWords.h"
#include "PorterPackage/Core/Media/CABCChildMedia.h"
#include "PorterPackage/Core/Media/CPartialMedia.h"

#include <array>
#include <limits>

namespace NSPorter {

CIFFWriter2::CIFFWriter2(CMedia* media, int32_t mode)
    : CIFFWriter2(media, GetIFFSizeEncoder(mode)) {}

CIFFWriter2::CIFFWriter2(CMedia* media, IFFSizeEncoder sizeEncoder)
    : fParent(nullptr), fMedia(media), fSizeEncoder(sizeEncoder) {}

CIFFWriter2::CIFFWriter2(CIFFWriter2* parent, const CIFFChunkHeader& header)
    : fParent(parent), fChildMedia(std::make_unique<CPartialMedia>(
                           fParent->fMedia, header.fOffset + header.GetHeaderSize())),
      fMedia(fChildMedia.get()), fHeader(header), fSizeEncoder(fParent->fSizeEncoder) {}

CIFFWriter2::~CIFFWriter2() = default;

void CIFFWriter2::BeginCat(CIFFChunkHeader& header, uint32_t type) {
    BeginGroup(header, kIFFWord_Cat, type);
}

void CIFFWriter2::BeginForm(CIFFChunkHeader& header, uint32_t type) {
    BeginGroup(header, kIFFWord_Form, type);
}

void CIFFWriter2::BeginList(CIFFChunkHeader& header, uint32_t type) {
    BeginGroup(header, kIFFWord_List, type);
}

void CIFFWriter2::BeginGroup(CIFFChunkHeader& header, uint32_t word, uint32_t type) {
    header = CIFFChunkHeader();
    header.fKind = word == kIFFWord_Cat    ? kIFFKind_Cat
                   : word == kIFFWord_List ? kIFFKind_List
                                           : kIFFKind_Form;
    header.fID = type;
    header.fOffset = fMedia->GetPosition();
    fMedia->WriteU32(word);
    WriteSize(0);
    fMedia->WriteU32(type);
    FlushIfChild(*fMedia, false);
}

void CIFFWriter2::BeginChunk(CIFFChunkHeader& header, uint32_t id) {
    header = CIFFChunkHeader();
    header.fKind = kIFFKind_Chunk;
    header.fID = id;
    header.fOffset = fMedia->GetPosition();
    fMedia->WriteU32(id);
    WriteSize(0);
    FlushIfChild(*fMedia, false);
}

void CIFFWriter2::EndChunk(const CIFFChunkHeader& header, int64_t dataSize) {
    const int64_t typeSize = header.GetHeaderSize() - 8;
    if (dataSize < 0 || dataSize > std::numeric_limits<uint32_t>::max() - typeSize) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdLengthError(""));
    }
    const int64_t end = header.fOffset + header.GetHeaderSize() + dataSize;
    fMedia->SetPosition(header.fOffset + 4);
    WriteSize(static_cast<uint32_t>(dataSize + typeSize));
    fMedia->SetPosition(end);
    if ((end & 1) != 0) {
        fMedia->WriteU8(0);
    }
    FlushIfChild(*fMedia, false);
}

int64_t CIFFWriter2::WriteChunk(uint32_t id, int64_t count, const uint8_t* data) {
    CIFFChunkHeader header;
    BeginChunk(header, id);
    CPartialMedia child(fMedia, header.fOffset + header.GetHeaderSize());
    child.Write(count, data);
    child.Flush(false);
    EndChunk(header, count);
    return fMedia->GetPosition() - header.fOffset;
}

void CIFFWriter2::WriteSize(uint32_t size) {
    std::array<uint8_t, 4> bytes{};
    fSizeEncoder(size, bytes.data());
    fMedia->Write(4, bytes.data());
}

} // namespace NSPorter

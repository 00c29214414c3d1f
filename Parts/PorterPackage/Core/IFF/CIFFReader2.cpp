#include "PorterPackage/Core/IFF/CIFFReader2.h"

#include "PorterPackage/Core/Bytes/CheckFormat.h"
#include "PorterPackage/Core/IFF/IFFGroupWords.h"
#include "PorterPackage/Core/Media/CPartialMedia.h"

#include <array>

namespace NSPorter {

namespace {

uint32_t ReadID(CMedia& media) {
    CheckFormat(media.BytesLeft() >= 4);
    const uint32_t id = media.ReadU32();
    CheckFormat(IsValidFourCharID(id));
    return id;
}

} // namespace

CIFFReader2::CIFFReader2(CMedia* media, int32_t mode)
    : CIFFReader2(media, GetIFFSizeDecoder(mode)) {}

CIFFReader2::CIFFReader2(CMedia* media, IFFSizeDecoder sizeDecoder)
    : fParent(nullptr), fMedia(media), fSizeDecoder(sizeDecoder) {}

CIFFReader2::CIFFReader2(CIFFReader2* parent, const CIFFChunkHeader& header)
    : fParent(parent), fChildMedia(fParent->MakeChildMedia(header)), fMedia(fChildMedia.get()),
      fHeader(header), fSizeDecoder(fParent->fSizeDecoder) {}

CIFFReader2::~CIFFReader2() = default;

void CIFFReader2::ReadHeader(CIFFChunkHeader& header) {
    ReadHeaderOf(kIFFWord_Form, header);
}

void CIFFReader2::ReadHeaderOf(uint32_t formWord, CIFFChunkHeader& header) {
    CIFFChunkHeader read;
    read.fOffset = fMedia->GetPosition();
    read.fID = ReadID(*fMedia);
    CheckFormat(fMedia->BytesLeft() >= 4);
    std::array<uint8_t, 4> size{};
    fMedia->Read(4, size.data());
    read.fSize = fSizeDecoder(size.data());
    // Held against this level's own media, so that no chunk reaches beyond its group.
    CheckFormat(read.fSize <= fMedia->BytesLeft());

    const uint32_t word = read.fID;
    read.fKind = word == formWord        ? kIFFKind_Form
                 : word == kIFFWord_Cat  ? kIFFKind_Cat
                 : word == kIFFWord_List ? kIFFKind_List
                                         : kIFFKind_Chunk;
    if (read.fKind != kIFFKind_Chunk) {
        read.fID = ReadID(*fMedia);
    }
    header = read;
}

bool CIFFReader2::ReadFirstHeader(CIFFChunkHeader& header) {
    fMedia->SetPosition(0);
    if (fMedia->GetLength() < 8) {
        return false;
    }
    ReadHeader(header);
    return true;
}

bool CIFFReader2::ReadNextHeader(const CIFFChunkHeader& header, CIFFChunkHeader& next) {
    const int64_t end = header.fOffset + header.GetTotalSize();
    const int64_t position = end + (end & 1);
    if (position >= fMedia->GetLength()) {
        return false;
    }
    fMedia->SetPosition(position);
    ReadHeader(next);
    return true;
}

bool CIFFReader2::FindChunk(uint32_t id, CIFFChunkHeader& header) {
    return FindOfKind(kIFFKind_Chunk, id, header);
}

bool CIFFReader2::FindForm(uint32_t type, CIFFChunkHeader& header) {
    return FindOfKind(kIFFKind_Form, type, header);
}

bool CIFFReader2::FindCat(uint32_t type, CIFFChunkHeader& header) {
    return FindOfKind(kIFFKind_Cat, type, header);
}

bool CIFFReader2::FindList(uint32_t type, CIFFChunkHeader& header) {
    return FindOfKind(kIFFKind_List, type, header);
}

bool CIFFReader2::FindOfKind(int32_t kind, uint32_t id, CIFFChunkHeader& header) {
    CIFFChunkHeader candidate;
    bool isThere = ReadFirstHeader(candidate);
    while (isThere && (candidate.fKind != kind || candidate.fID != id)) {
        isThere = ReadNextHeader(candidate, candidate);
    }
    if (isThere) {
        header = candidate;
    }
    return isThere;
}

int64_t CIFFReader2::CountChunks() {
    const int64_t position = fMedia->GetPosition();
    int64_t count = 0;
    CIFFChunkHeader header;
    for (bool isThere = ReadFirstHeader(header); isThere;
         isThere = ReadNextHeader(header, header)) {
        ++count;
    }
    fMedia->SetPosition(position);
    return count;
}

std::unique_ptr<CMedia> CIFFReader2::MakeChildMedia(const CIFFChunkHeader& header) {
    auto media = std::make_unique<CPartialMedia>(fMedia, header.fOffset + header.GetHeaderSize(),
                                                 header.GetDataSize());
    // The cursor of this level need not stand behind the header.
    media->SetPosition(0);
    return media;
}

void CIFFReader2::ReadChunkData(const CIFFChunkHeader& header, uint8_t* destination) {
    const int64_t size = header.GetDataSize();
    const int64_t start = header.fOffset + header.GetHeaderSize();
    CheckFormat(size <= fMedia->GetLength() - start);
    MakeChildMedia(header)->Read(size, destination);
}

std::unique_ptr<CMedia> CIFFReader2::OpenChunk(uint32_t id) {
    CIFFChunkHeader header;
    return FindChunk(id, header) ? MakeChildMedia(header) : nullptr;
}

void CIFFReader2::ReadChunk(uint32_t id, uint8_t* destination) {
    CIFFChunkHeader header;
    CheckFormat(FindChunk(id, header));
    ReadChunkData(header, destination);
}

bool IsIFFMedia(CMedia& media, int32_t mode) noexcept {
    const int64_t position = media.GetPosition();
    bool isGroup = false;
    try {
        CIFFReader2 reader(&media, mode);
        CIFFChunkHeader header;
        isGroup = reader.ReadFirstHeader(header) && header.fKind >= kIFFKind_Form &&
                  header.fKind <= kIFFKind_List && header.GetTotalSize() <= media.GetLength();
    } catch (...) {
        isGroup = false;
    }
    media.SetPosition(position);
    return isGroup;
}

} // namespace NSPorter

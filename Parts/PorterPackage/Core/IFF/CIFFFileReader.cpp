#include "PorterPackage/Core/IFF/CIFFFileReader.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <boost/make_shared.hpp>

namespace NSPorter {

CIFFFileReader::CIFFFileLevel::CIFFFileLevel(const boost::shared_ptr<CIFFReader2>& enclosing,
                                             const CIFFChunkHeader& header)
    : fEnclosing(enclosing), fReader(boost::make_shared<CIFFReader2>(enclosing.get(), header)),
      fHeader(header) {}

CIFFFileReader::CIFFFileReader(CMedia* media, int32_t mode)
    : fCurrent(boost::make_shared<CIFFReader2>(media, mode)) {}

CIFFFileReader::~CIFFFileReader() {
    while (!fLevels.empty()) {
        Leave();
    }
}

bool CIFFFileReader::TryEnterChunk(uint32_t id) {
    return TryEnter(kIFFKind_Chunk, id);
}

bool CIFFFileReader::TryEnterForm(uint32_t type) {
    return TryEnter(kIFFKind_Form, type);
}

bool CIFFFileReader::TryEnterCat(uint32_t type) {
    return TryEnter(kIFFKind_Cat, type);
}

bool CIFFFileReader::TryEnterList(uint32_t type) {
    return TryEnter(kIFFKind_List, type);
}

void CIFFFileReader::EnterChunk(uint32_t id) {
    Enter(kIFFKind_Chunk, id);
}

void CIFFFileReader::EnterForm(uint32_t type) {
    Enter(kIFFKind_Form, type);
}

void CIFFFileReader::EnterCat(uint32_t type) {
    Enter(kIFFKind_Cat, type);
}

void CIFFFileReader::EnterList(uint32_t type) {
    Enter(kIFFKind_List, type);
}

bool CIFFFileReader::EnterFirstChild() {
    CIFFChunkHeader header;
    const bool isThere = fCurrent->ReadFirstHeader(header);
    if (isThere) {
        Push(fCurrent, header);
    }
    return isThere;
}

bool CIFFFileReader::EnterNextSibling() {
    const boost::shared_ptr<CIFFReader2> enclosing = Innermost().fEnclosing;
    CIFFChunkHeader next;
    const bool isThere = enclosing->ReadNextHeader(Innermost().fHeader, next);
    if (!isThere) {
        Leave();
        return false;
    }
    auto level = boost::make_shared<CIFFFileLevel>(enclosing, next);
    fLevels.top().swap(level);
    fCurrent = fLevels.top()->fReader;
    return true;
}

void CIFFFileReader::Leave() {
    fCurrent = Innermost().fEnclosing;
    fLevels.pop();
}

const CIFFChunkHeader& CIFFFileReader::GetHeader() const {
    return Innermost().fHeader;
}

int64_t CIFFFileReader::GetDataSize() const {
    return GetHeader().GetDataSize();
}

void CIFFFileReader::ReadData(uint8_t* destination) {
    Innermost().fEnclosing->ReadChunkData(GetHeader(), destination);
}

CMedia* CIFFFileReader::GetMedia() const {
    return fCurrent->GetMedia();
}

int64_t CIFFFileReader::CountChunks() {
    return fCurrent->CountChunks();
}

std::unique_ptr<CMedia> CIFFFileReader::OpenChunk(uint32_t id) {
    return fCurrent->OpenChunk(id);
}

bool CIFFFileReader::TryEnter(int32_t kind, uint32_t id) {
    CIFFChunkHeader header;
    const bool isThere = fCurrent->FindOfKind(kind, id, header);
    if (isThere) {
        Push(fCurrent, header);
    }
    return isThere;
}

void CIFFFileReader::Enter(int32_t kind, uint32_t id) {
    CheckFormat(TryEnter(kind, id));
}

void CIFFFileReader::Push(const boost::shared_ptr<CIFFReader2>& enclosing,
                          const CIFFChunkHeader& header) {
    fLevels.push(boost::make_shared<CIFFFileLevel>(enclosing, header));
    fCurrent = fLevels.top()->fReader;
}

const CIFFFileReader::CIFFFileLevel& CIFFFileReader::Innermost() const {
    if (fLevels.empty()) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
    }
    return *fLevels.top();
}

} // namespace NSPorter

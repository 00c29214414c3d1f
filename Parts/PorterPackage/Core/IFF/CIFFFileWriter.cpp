#include "PorterPackage/Core/IFF/CIFFFileWriter.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/IFF/IFFGroupWords.h"
#include "PorterPackage/Core/Media/CABCChildMedia.h"

#include <boost/make_shared.hpp>

namespace NSPorter {

CIFFFileWriter::CIFFFileLevel::CIFFFileLevel(const boost::shared_ptr<CIFFWriter2>& enclosing,
                                             const CIFFChunkHeader& header)
    : fEnclosing(enclosing), fWriter(boost::make_shared<CIFFWriter2>(enclosing.get(), header)),
      fHeader(header) {}

CIFFFileWriter::CIFFFileWriter(CMedia* media, int32_t mode)
    : fCurrent(boost::make_shared<CIFFWriter2>(media, mode)) {}

CIFFFileWriter::~CIFFFileWriter() {
    while (!fLevels.empty()) {
        const size_t depth = fLevels.size();
        try {
            Leave();
        } catch (...) {
            // A level that could not be ended is given up; the ones around it still get their sizes
            // if the media lets them.
            if (fLevels.size() == depth) {
                Pop();
            }
        }
    }
}

void CIFFFileWriter::EnterCat(uint32_t type) {
    EnterGroup(kIFFWord_Cat, type);
}

void CIFFFileWriter::EnterForm(uint32_t type) {
    EnterGroup(kIFFWord_Form, type);
}

void CIFFFileWriter::EnterList(uint32_t type) {
    EnterGroup(kIFFWord_List, type);
}

void CIFFFileWriter::EnterGroup(uint32_t word, uint32_t type) {
    CIFFChunkHeader header;
    fCurrent->BeginGroup(header, word, type);
    Push(header);
}

void CIFFFileWriter::EnterChunk(uint32_t id) {
    CIFFChunkHeader header;
    fCurrent->BeginChunk(header, id);
    Push(header);
}

void CIFFFileWriter::Leave() {
    if (fLevels.empty()) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
    }
    const CIFFChunkHeader header = fLevels.top()->fHeader;
    const int64_t dataSize = GetMedia()->GetLength();
    FlushIfChild(*GetMedia(), false);
    Pop();
    fCurrent->EndChunk(header, dataSize);
}

int64_t CIFFFileWriter::WriteChunk(uint32_t id, int64_t count, const uint8_t* data) {
    return fCurrent->WriteChunk(id, count, data);
}

CMedia* CIFFFileWriter::GetMedia() const {
    return fCurrent->GetMedia();
}

void CIFFFileWriter::Push(const CIFFChunkHeader& header) {
    fLevels.push(boost::make_shared<CIFFFileLevel>(fCurrent, header));
    fCurrent = fLevels.top()->fWriter;
}

void CIFFFileWriter::Pop() {
    fCurrent = fLevels.top()->fEnclosing;
    fLevels.pop();
}

} // namespace NSPorter

#include "PorterPackage/Core/IFF/CIFFWriter.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Media/CABCChildMedia.h"

#include <array>
#include <limits>

namespace NSPorter {

namespace {

// Stands in size fields until the size is known, and for the start of what is not open.
constexpr uint32_t kNoValueYet = 0xADDE1AB0;

void CheckSequence(bool allowed) {
    if (!allowed) {
        NSLichen::Raise(NSLichen::XIllegalCallSequence(""));
    }
}

} // namespace

CIFFWriter::CIFFWriter(CMedia* media)
    : fGroupStart(kNoValueYet), fChunkStart(kNoValueYet), fMedia(media) {}

CIFFWriter::~CIFFWriter() = default;

void CIFFWriter::BeginGroup(uint32_t groupID, uint32_t type) {
    CheckSequence(fGroupStart == kNoValueYet && fChunkStart == kNoValueYet);
    fGroupStart = fMedia->GetPosition();
    fMedia->WriteU32(groupID);
    WriteSize(kNoValueYet);
    fMedia->WriteU32(type);
}

void CIFFWriter::EndGroup() {
    CheckSequence(fGroupStart != kNoValueYet && fChunkStart == kNoValueYet);
    PatchSize(fGroupStart);
    fGroupStart = kNoValueYet;
    FlushIfChild(*fMedia, false);
}

void CIFFWriter::BeginChunk(uint32_t id) {
    CheckSequence(fChunkStart == kNoValueYet);
    fChunkStart = fMedia->GetPosition();
    fMedia->WriteU32(id);
    WriteSize(kNoValueYet);
}

void CIFFWriter::EndChunk() {
    CheckSequence(fChunkStart != kNoValueYet);
    PatchSize(fChunkStart);
    fChunkStart = kNoValueYet;
    FlushIfChild(*fMedia, false);
}

void CIFFWriter::WriteChunk(uint32_t id, const uint8_t* data, int64_t count) {
    BeginChunk(id);
    Write(count, data);
    FlushIfChild(*fMedia, false);
    EndChunk();
}

void CIFFWriter::Write(int64_t count, const uint8_t* data) {
    fMedia->Write(count, data);
}

void CIFFWriter::WriteSize(uint32_t size) {
    std::array<uint8_t, 4> bytes{};
    if (fNativeSizes) {
        EncodeNative(size, bytes.data());
    } else {
        EncodeBigEndian(size, bytes.data());
    }
    fMedia->Write(4, bytes.data());
}

void CIFFWriter::PatchSize(int64_t start) {
    const int64_t end = fMedia->GetPosition();
    const int64_t size = end - start - 8;
    if (size < 0 || size > std::numeric_limits<uint32_t>::max()) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdLengthError(""));
    }
    fMedia->SetPosition(start + 4);
    WriteSize(static_cast<uint32_t>(size));
    fMedia->SetPosition(end);
    if (fPadded && ((end - start) & 1) != 0) {
        fMedia->WriteU8(0);
    }
}

} // namespace NSPorter

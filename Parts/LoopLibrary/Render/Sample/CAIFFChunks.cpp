#include "LoopLibrary/Render/Sample/CAIFFChunks.h"

#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

using NSPorter::CheckFormat;
using NSPorter::CIFFReader;
using NSPorter::CIFFWriter;
using NSPorter::CMedia;

constexpr uint32_t kCommonID = NSPorter::FourCharID("COMM");
constexpr uint32_t kInstrumentID = NSPorter::FourCharID("INST");
constexpr uint32_t kMarkerID = NSPorter::FourCharID("MARK");

constexpr uint32_t kPlainCommonSize = 18;
constexpr uint32_t kCommonSizeWithCompression = 22;
constexpr uint32_t kInstrumentSize = 20;
constexpr int64_t kMarkerCountSize = 2;
// A marker but for its name: id, position and the name's length byte.
constexpr int64_t kMarkerHeadSize = 7;
constexpr size_t kLongestName = 255;

// Chunks are read from the file's own media, where nothing guards the end.
void CheckHolds(const CMedia& media, uint32_t chunkSize, int64_t wanted) {
    CheckFormat(wanted <= int64_t{chunkSize} && wanted <= media.BytesLeft());
}

CAIFFLoop ReadLoop(CMedia& media) {
    CAIFFLoop loop;
    loop.fPlayMode = media.ReadU16();
    loop.fBegin = static_cast<int16_t>(media.ReadU16());
    loop.fEnd = static_cast<int16_t>(media.ReadU16());
    return loop;
}

void WriteLoop(CMedia& media, const CAIFFLoop& loop) {
    media.WriteU16(loop.fPlayMode);
    media.WriteU16(static_cast<uint16_t>(loop.fBegin));
    media.WriteU16(static_cast<uint16_t>(loop.fEnd));
}

int64_t GetMarkerSize(size_t nameLength) {
    const int64_t size = kMarkerHeadSize + static_cast<int64_t>(nameLength);
    return size + (size & 1);
}

} // namespace

void CAIFFCommonChunk::Read(CIFFReader& reader) {
    uint32_t size = 0;
    CheckFormat(reader.FindChunk(kCommonID, size));
    CMedia& media = *reader.GetMedia();
    fHasCompression = size >= kCommonSizeWithCompression;
    CheckHolds(media, size, fHasCompression ? kCommonSizeWithCompression : kPlainCommonSize);
    fChannels = media.ReadU16();
    fFrames = media.ReadU32();
    fBits = media.ReadU16();
    fSampleRate = media.ReadExtended();
    fCompression = fHasCompression ? media.ReadU32() : kAIFFCompressionNone;
}

void CAIFFCommonChunk::Write(CIFFWriter& writer) const {
    writer.BeginChunk(kCommonID);
    CMedia& media = *writer.GetMedia();
    media.WriteU16(fChannels);
    media.WriteU32(fFrames);
    media.WriteU16(fBits);
    media.WriteExtended(fSampleRate);
    if (fHasCompression) {
        media.WriteU32(fCompression);
    }
    writer.EndChunk();
}

bool CAIFFInstrumentChunk::Read(CIFFReader& reader) {
    uint32_t size = 0;
    if (!reader.FindChunk(kInstrumentID, size)) {
        return false;
    }
    CMedia& media = *reader.GetMedia();
    CheckHolds(media, size, kInstrumentSize);
    fRootNote = static_cast<uint8_t>(media.ReadU8());
    fDetune = static_cast<int8_t>(media.ReadU8());
    for (uint8_t* field : {&fLowNote, &fHighNote, &fLowVelocity, &fHighVelocity}) {
        *field = static_cast<uint8_t>(media.ReadU8());
    }
    fGain = media.ReadU16();
    fSustainLoop = ReadLoop(media);
    fReleaseLoop = ReadLoop(media);
    return true;
}

void CAIFFInstrumentChunk::Write(CIFFWriter& writer) const {
    writer.BeginChunk(kInstrumentID);
    CMedia& media = *writer.GetMedia();
    for (const uint8_t field : {fRootNote, static_cast<uint8_t>(fDetune), fLowNote, fHighNote,
                                fLowVelocity, fHighVelocity}) {
        media.WriteU8(field);
    }
    media.WriteU16(fGain);
    WriteLoop(media, fSustainLoop);
    WriteLoop(media, fReleaseLoop);
    writer.EndChunk();
}

bool CAIFFMarkerChunk::Read(CIFFReader& reader) {
    uint32_t size = 0;
    if (!reader.FindChunk(kMarkerID, size)) {
        return false;
    }
    CMedia& media = *reader.GetMedia();
    CheckHolds(media, size, std::max<int64_t>(size, kMarkerCountSize));
    const uint32_t count = media.ReadU16();
    int64_t left = int64_t{size} - kMarkerCountSize;
    fMarkers.clear();
    for (uint32_t i = 0; i < count; ++i) {
        CheckFormat(left >= kMarkerHeadSize);
        CAIFFMarker marker;
        marker.fID = media.ReadU16();
        marker.fPosition = media.ReadU32();
        const uint32_t nameLength = media.ReadU8();
        const int64_t entrySize = GetMarkerSize(nameLength);
        CheckFormat(entrySize <= left);
        marker.fName.resize(nameLength);
        media.Read(nameLength, reinterpret_cast<uint8_t*>(marker.fName.data()));
        media.Skip(entrySize - kMarkerHeadSize - nameLength);
        left -= entrySize;
        fMarkers.push_back(std::move(marker));
    }
    return true;
}

void CAIFFMarkerChunk::Write(CIFFWriter& writer) const {
    writer.BeginChunk(kMarkerID);
    CMedia& media = *writer.GetMedia();
    media.WriteU16(static_cast<uint16_t>(fMarkers.size()));
    for (const CAIFFMarker& marker : fMarkers) {
        const std::string name = marker.fName.substr(0, kLongestName);
        media.WriteU16(marker.fID);
        media.WriteU32(marker.fPosition);
        media.WriteU8(static_cast<uint32_t>(name.size()));
        media.Write(static_cast<int64_t>(name.size()),
                    reinterpret_cast<const uint8_t*>(name.data()));
        if (name.size() % 2 == 0) {
            media.WriteU8(0);
        }
    }
    writer.EndChunk();
}

const CAIFFMarker* CAIFFMarkerChunk::Find(int32_t id) const {
    const auto found = std::find_if(fMarkers.begin(), fMarkers.end(),
                                    [id](const CAIFFMarker& marker) { return marker.fID == id; });
    return found == fMarkers.end() ? nullptr : &*found;
}

} // namespace NSLOPDLL

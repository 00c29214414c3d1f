#include "LoopLibrary/Render/Sample/CAIFFSampleWriter.h"

#include "LoopLibrary/Render/Sample/CAIFFChunks.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

namespace {

constexpr int16_t kLoopStartMarker = 1;
constexpr int16_t kLoopEndMarker = 2;

uint16_t ToPlayMode(const CWaveLoopInfo& loopInfo) {
    if (loopInfo.fMode != kLoopMode_Looping) {
        return kAIFFPlayMode_None;
    }
    return loopInfo.fDirection == kLoopDirection_ForwardBackward ? kAIFFPlayMode_ForwardBackward
                                                                 : kAIFFPlayMode_Forward;
}

} // namespace

void WriteAIFFCommon(NSPorter::CIFFWriter& writer, const CWaveSampleInfo& info,
                     EAIFFCommonForm form) {
    CAIFFCommonChunk common;
    common.fChannels = info.fChannels;
    common.fFrames = static_cast<uint32_t>(info.fFrames);
    common.fBits = static_cast<uint16_t>(info.fBitDepth);
    common.fSampleRate = info.fSampleRate;
    common.fHasCompression = form == EAIFFCommonForm::kWithCompressionType;
    common.Write(writer);
}

void WriteAIFFLoop(NSPorter::CIFFWriter& writer, const CWaveLoopInfo& loopInfo) {
    const bool hasPoints = loopInfo.fMode != kLoopMode_None;
    CAIFFInstrumentChunk instrument;
    if (loopInfo.fHasRootNote) {
        instrument.fRootNote = loopInfo.fRootNote;
        instrument.fDetune = loopInfo.fDetune;
    }
    if (loopInfo.fHasNoteRange) {
        instrument.fLowNote = loopInfo.fLowNote;
        instrument.fHighNote = loopInfo.fHighNote;
    }
    if (hasPoints) {
        instrument.fSustainLoop = {ToPlayMode(loopInfo), kLoopStartMarker, kLoopEndMarker};
    }
    instrument.Write(writer);
    if (hasPoints) {
        CAIFFMarkerChunk markers;
        markers.fMarkers = {
            {kLoopStartMarker, static_cast<uint32_t>(loopInfo.fStart), "Loop Start"},
            {kLoopEndMarker, static_cast<uint32_t>(loopInfo.fEnd), "Loop End"}};
        markers.Write(writer);
    }
}

void BeginAIFFSoundData(NSPorter::CIFFWriter& writer, uint32_t offset, uint32_t blockSize) {
    writer.BeginChunk(kAIFFSoundDataID);
    NSPorter::CMedia& media = *writer.GetMedia();
    media.WriteU32(offset);
    media.WriteU32(blockSize);
    constexpr std::array<uint8_t, 1024> zeros{};
    for (int64_t left = offset; left > 0;) {
        const int64_t piece = std::min<int64_t>(left, zeros.size());
        media.Write(piece, zeros.data());
        left -= piece;
    }
}

} // namespace NSLOPDLL

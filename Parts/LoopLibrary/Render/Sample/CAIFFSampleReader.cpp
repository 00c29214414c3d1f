#include "LoopLibrary/Render/Sample/CAIFFSampleReader.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/Render/Sample/ReadSamples.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <algorithm>
#include <initializer_list>

namespace NSLOPDLL {

namespace {

using NSPorter::CheckFormat;

constexpr int64_t kSoundDataHeadSize = 8;
constexpr uint8_t kHighestMidiValue = 127;
constexpr int8_t kMostDetune = 50;

// Rates that are not a number fail the comparison, too.
int32_t ToSampleRate(double rate) {
    CheckFormat(rate >= 1.0 && rate < 0x1p31);
    return static_cast<int32_t>(rate);
}

void ReadCommon(CWaveSampleInfo& info, NSPorter::CIFFReader& reader) {
    CAIFFCommonChunk common;
    common.Read(reader);
    if (common.fCompression != kAIFFCompressionNone) {
        NSLichen::Raise(NSLichen::XUnsupportedFormat(""));
    }
    const auto frames = static_cast<int32_t>(common.fFrames);
    CheckFormat(common.fChannels != 0 && frames >= 0);
    const int32_t sampleRate = ToSampleRate(common.fSampleRate);
    info.fChannels = common.fChannels;
    info.fSampleRate = sampleRate;
    info.fFrames = frames;
    if (GetBytesPerSample(common.fBits) == 0) {
        NSLichen::Raise(NSLichen::XUnsupportedFormat(""));
    }
    info.fBitDepth = common.fBits;
}

void CheckInstrument(const CAIFFInstrumentChunk& instrument) {
    CheckFormat(instrument.fSustainLoop.fPlayMode <= kAIFFPlayMode_ForwardBackward &&
                instrument.fReleaseLoop.fPlayMode <= kAIFFPlayMode_ForwardBackward);
    for (const uint8_t value : {instrument.fRootNote, instrument.fLowNote, instrument.fHighNote,
                                instrument.fLowVelocity, instrument.fHighVelocity}) {
        CheckFormat(value <= kHighestMidiValue);
    }
}

void SetLoopPoints(CWaveLoopInfo& loopInfo, int32_t mode, const CAIFFMarker& begin,
                   const CAIFFMarker& end) {
    loopInfo.fMode = mode;
    loopInfo.fStart = static_cast<int32_t>(begin.fPosition);
    loopInfo.fEnd = static_cast<int32_t>(end.fPosition);
}

// Points without a loop are a courtesy: whatever is wrong with them, they are just not taken.
void TakeUnloopedPoints(NSPorter::CIFFReader& reader, const CAIFFLoop& loop,
                        CWaveLoopInfo& loopInfo) {
    CAIFFMarkerChunk markers;
    try {
        if (!markers.Read(reader)) {
            return;
        }
    } catch (const NSLichen::XFormatViolation&) {
        return;
    }
    const CAIFFMarker* begin = markers.Find(loop.fBegin);
    const CAIFFMarker* end = markers.Find(loop.fEnd);
    if (begin != nullptr && end != nullptr) {
        SetLoopPoints(loopInfo, kLoopMode_PointsOnly, *begin, *end);
    }
}

// A marker id of 0 says that there is no marker, although a marker may bear it.
void TakeLoop(NSPorter::CIFFReader& reader, const CAIFFLoop& loop, CWaveLoopInfo& loopInfo) {
    CAIFFMarkerChunk markers;
    if (!markers.Read(reader)) {
        CheckFormat(loop.fBegin < 1 || loop.fEnd < 1);
        return;
    }
    const CAIFFMarker* begin = markers.Find(loop.fBegin);
    const CAIFFMarker* end = markers.Find(loop.fEnd);
    CheckFormat(begin != nullptr || loop.fBegin == 0);
    CheckFormat(end != nullptr || loop.fEnd == 0);
    if (begin != nullptr && end != nullptr) {
        SetLoopPoints(loopInfo, kLoopMode_Looping, *begin, *end);
        loopInfo.fDirection = loop.fPlayMode == kAIFFPlayMode_ForwardBackward
                                  ? kLoopDirection_ForwardBackward
                                  : kLoopDirection_Forward;
    }
}

} // namespace

void ReadAIFFSampleInfo(CWaveSampleInfo& info, NSPorter::CMedia& media) {
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    info = CWaveSampleInfo();
    ReadCommon(info, reader);
    CWaveLoopInfo& loop = info.fLoop;
    try {
        ReadAIFFLoopInfo(reader, loop);
    } catch (const NSLichen::XFormatViolation&) {
        loop = CWaveLoopInfo();
    }
    loop.fStart = std::clamp(loop.fStart, 0, info.fFrames);
    loop.fEnd = std::clamp(loop.fEnd, 0, info.fFrames);
    if (loop.fStart >= loop.fEnd) {
        loop.fMode = kLoopMode_None;
        loop.fStart = 0;
        loop.fEnd = 0;
    }
}

void ReadAIFFLoopInfo(NSPorter::CIFFReader& reader, CWaveLoopInfo& loopInfo) {
    CAIFFInstrumentChunk instrument;
    if (!instrument.Read(reader)) {
        return;
    }
    instrument.fDetune = std::clamp<int8_t>(instrument.fDetune, -kMostDetune, kMostDetune);
    CheckInstrument(instrument);

    loopInfo.fHasRootNote = true;
    loopInfo.fRootNote = instrument.fRootNote;
    loopInfo.fDetune = instrument.fDetune;
    loopInfo.fHasNoteRange = true;
    loopInfo.fLowNote = instrument.fLowNote;
    loopInfo.fHighNote = instrument.fHighNote;
    loopInfo.fMode = kLoopMode_None;
    loopInfo.fDirection = kLoopDirection_Forward;
    loopInfo.fStart = 0;
    loopInfo.fEnd = 0;

    const CAIFFLoop& loop = instrument.fSustainLoop;
    if (loop.fBegin < 0 || loop.fEnd < 0) {
        return;
    }
    if (loop.fPlayMode == kAIFFPlayMode_None) {
        TakeUnloopedPoints(reader, loop, loopInfo);
    } else {
        TakeLoop(reader, loop, loopInfo);
    }
    if (loopInfo.fStart < 0) {
        loopInfo.fMode = kLoopMode_None;
        loopInfo.fStart = 0;
    }
    if (loopInfo.fStart >= loopInfo.fEnd) {
        loopInfo.fMode = kLoopMode_None;
        loopInfo.fStart = 0;
        loopInfo.fEnd = 0;
    }
}

SAIFFSoundData EnterAIFFSoundData(NSPorter::CIFFReader& reader, const CWaveSampleInfo& info) {
    uint32_t chunkSize = 0;
    CheckFormat(reader.FindChunk(kAIFFSoundDataID, chunkSize));
    NSPorter::CMedia& media = *reader.GetMedia();
    CheckFormat(chunkSize >= kSoundDataHeadSize && media.BytesLeft() >= kSoundDataHeadSize);
    SAIFFSoundData soundData;
    soundData.fOffset = media.ReadU32();
    soundData.fBlockSize = media.ReadU32();

    const int64_t dataSize = int64_t{chunkSize} - kSoundDataHeadSize;
    CheckFormat(soundData.fOffset <= dataSize);
    media.Skip(soundData.fOffset);
    const int64_t bytesPerSample = GetBytesPerSample(info.fBitDepth);
    CheckFormat(bytesPerSample > 0);
    CheckFormat(bytesPerSample * info.fChannels * info.fFrames <= dataSize - soundData.fOffset);
    return soundData;
}

} // namespace NSLOPDLL

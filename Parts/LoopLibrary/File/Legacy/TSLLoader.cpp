#include "LoopLibrary/File/Legacy/TSLLoader.h"

#include "LoopLibrary/File/Common/CTesselEditSettings.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "LoopLibrary/File/Legacy/MonoAudio.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sample/CAIFFSampleReader.h"
#include "LoopLibrary/Render/Sequencer/LoopTempo.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"

#include <string>
#include <utility>
#include <vector>

namespace NSLOPDLL {

namespace {

constexpr int32_t kCopiedAtOnce = 1024;

// The recording must say which part of it is the loop.
void CheckLoop(const CWaveSampleInfo& info) {
    const CWaveLoopInfo& loop = info.fLoop;
    if (loop.fMode == kLoopMode_None) {
        RaiseFormatViolation("invalid loop mode");
    }
    if (loop.fStart < 0 || loop.fEnd > info.fFrames || loop.fStart >= loop.fEnd) {
        RaiseFormatViolation("invalid loop points");
    }
}

int32_t TempoOf(const CTSLAppChunk& chunk, int64_t loopFrames, int32_t sampleRate) {
    if (!chunk.HasLength()) {
        return 0;
    }
    if (chunk.fTempoStored) {
        return kTempoRange.Clip(chunk.fTempo);
    }
    const int32_t beats = chunk.fTimeSignatureNumerator * chunk.fBars + chunk.fBeats;
    return kTempoRange.Clip(LoopTempo(loopFrames, static_cast<uint32_t>(sampleRate), beats));
}

CSlice SliceFromRecord(const STSLSliceRecord& record) {
    CSlice slice;
    slice.SetPosition(record.fPosition);
    // Levels from 32768 on come out negative and never sound.
    slice.SetLevel(static_cast<int16_t>(record.fLevel));
    slice.SetMuted(record.fMuted);
    if (record.fKind == CTSLAppChunk::kKind_Hidden) {
        slice.SetKind(kSliceKind_Hidden);
    } else if (record.fKind == CTSLAppChunk::kKind_Forced) {
        slice.SetKind(kSliceKind_Forced);
    }
    return slice;
}

} // namespace

void ReadTSLFileInfo(NSPorter::CMedia& media, CTesselFileInfo& info, bool& storedFlag) {
    CWaveSampleInfo audio;
    ReadAIFFSampleInfo(audio, media);
    Check16BitMono(audio, "TSL file that isn't 16-bit mono");
    CheckLoop(audio);
    const CTSLAppChunk chunk = ReadTSLChunk(media);

    info.fWaveSampleInfo = audio;
    info.fSliceCount = static_cast<int32_t>(chunk.fSlices.size());
    info.fBars = chunk.fBars;
    info.fBeats = chunk.fBeats;
    info.fTimeSignatureNumerator = chunk.fTimeSignatureNumerator;
    info.fTimeSignatureDenominator = chunk.fTimeSignatureDenominator;
    const int32_t loopFrames = audio.fLoop.fEnd - audio.fLoop.fStart;
    info.fTempo = TempoOf(chunk, loopFrames, audio.fSampleRate);
    info.fCompressionRatio = 1.0;
    info.fLoopPercent = LoopPercent(loopFrames, audio.fFrames);
    info.fExportedSliceCount = chunk.CountExportedSlices(static_cast<uint32_t>(audio.fLoop.fStart),
                                                         static_cast<uint32_t>(audio.fLoop.fEnd));
    info.fExportedSize = 0;
    if (chunk.fStoredFlag) {
        storedFlag = true;
    }
}

std::unique_ptr<CABCWaveSample> ReadTSLWaveSample(NSPorter::CMedia& media,
                                                  const CTesselFileInfo& fileInfo,
                                                  CLOP2DecompressCallback& callback) {
    // As written: the words of the file info begin with capitals.
    const std::string wrongAudio = "tsl file that isn't 16-bit mono";
    CWaveSampleInfo audio;
    ReadAIFFSampleInfo(audio, media);
    Check16BitMono(audio, wrongAudio);
    CheckLoop(audio);
    Check16BitMono(fileInfo.fWaveSampleInfo, wrongAudio);
    if (audio.fFrames <= 0) {
        RaiseUnsupportedFormat("zero or negative # of frames");
    }

    // The sound is known to be there before memory is taken for it.
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    EnterAIFFSoundData(reader, audio);
    if (int64_t{audio.fFrames} * 2 > media.BytesLeft()) {
        RaiseFormatViolation("");
    }
    std::unique_ptr<CABCWaveSample> waveSample = CreateWaveSample(
        static_cast<uint32_t>(audio.fSampleRate), static_cast<uint32_t>(audio.fFrames), false, 16);
    CopyMonoFrames(media, audio, 0, audio.fFrames, kCopiedAtOnce, *waveSample, callback);
    callback.ShouldStop(static_cast<uint32_t>(audio.fFrames));
    waveSample->SetLoop(kSampleLoopMode_Forward, audio.fLoop.fStart, audio.fLoop.fEnd);
    return waveSample;
}

void ReadTSLSlices(NSPorter::CMedia& media, CSliceSequence& sequence) {
    const CTSLAppChunk chunk = ReadTSLChunk(media);
    std::vector<CSlice> slices;
    slices.reserve(chunk.fSlices.size());
    for (const STSLSliceRecord& record : chunk.fSlices) {
        slices.push_back(SliceFromRecord(record));
    }
    sequence.InsertSlices(std::move(slices));
    sequence.UpdateSliceLengths();
    sequence.SetSensitivity(chunk.fSensitivity / 10);
}

void ReadTSLEditSettings(NSPorter::CMedia& media, CTesselEditSettings& settings) {
    const CTSLAppChunk chunk = ReadTSLChunk(media);
    settings.fSplitIntoSlices = chunk.fSplitIntoSlices ? 1 : 0;
    if (!chunk.HasLength() && settings.fGridMode == 12) {
        settings.fGridMode = 0;
    }
}

} // namespace NSLOPDLL

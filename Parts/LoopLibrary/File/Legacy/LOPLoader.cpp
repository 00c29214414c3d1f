#include "LoopLibrary/File/Legacy/LOPLoader.h"

#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"
#include "LoopLibrary/File/Legacy/CLOPSliceCopier.h"
#include "LoopLibrary/File/Legacy/MonoAudio.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sample/CAIFFSampleReader.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"
#include "LoopLibrary/Render/Slices/CSliceSequence.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace NSLOPDLL {

namespace {

CWaveSampleInfo ReadMonoInfo(NSPorter::CMedia& media) {
    CWaveSampleInfo info;
    ReadAIFFSampleInfo(info, media);
    Check16BitMono(info, "lop file that isn't 16-bit mono");
    return info;
}

// The records may ask for any number of frames, far beyond what can be addressed.
int32_t TotalFramesOf(const CLOPAppChunk& chunk) {
    const int64_t total = chunk.GetTotalFrames();
    if (total > std::numeric_limits<int32_t>::max()) {
        RaiseFormatViolation("wrong fExportedSize in file info");
    }
    return static_cast<int32_t>(total);
}

CSlice MakeSlice(int32_t position, bool muted) {
    CSlice slice;
    slice.SetPosition(static_cast<uint32_t>(position));
    slice.SetLevel(32767);
    slice.SetMuted(muted);
    slice.SetKind(kSliceKind_Level);
    return slice;
}

// Lays the pieces out; of a run the last one counts.
void CopyPieces(const CLOPAppChunk& chunk, int32_t total, CLOPSliceCopier& copier,
                CLOP2DecompressCallback& callback) {
    const double framesPerTick = chunk.GetFramesPerTick();
    for (size_t first = 0; first < chunk.fSlices.size();) {
        const size_t end = chunk.FindRunEnd(first);
        const SLOPSliceRecord& record = chunk.fSlices[end - 1];
        const int32_t position = FrameOfTick(record.fPPQPosition, framesPerTick);
        ReportFrame(callback, position);
        // Negative for a position behind the end, which copies nothing.
        const int64_t length = std::min<int64_t>(record.fSourceLength, int64_t{total} - position);
        copier.Copy(record, position, length);
        first = end;
    }
}

} // namespace

void ReadLOPFileInfo(NSPorter::CMedia& media, CTesselFileInfo& info) {
    const CWaveSampleInfo audio = ReadMonoInfo(media);
    const CLOPAppChunk chunk = ReadLOPChunk(media);
    const int32_t total = TotalFramesOf(chunk);

    info.fWaveSampleInfo = audio;
    info.fSliceCount = static_cast<int32_t>(chunk.fSlices.size());
    info.fBars = chunk.GetBars();
    info.fBeats = chunk.GetBeats();
    info.fTempo = kTempoRange.Clip(chunk.fTempo);
    info.fTimeSignatureNumerator = 4;
    info.fTimeSignatureDenominator = 4;
    info.fWaveSampleInfo.fFrames = total;
    info.fCompressionRatio = 1.0;
    info.fLoopPercent = 100;
    info.fExportedSize = int64_t{total} * 2 * 101 / 100;
    info.fExportedSliceCount = chunk.CountDistinctPositions();
    info.fWaveSampleInfo.fLoop.fDirection = kLoopDirection_Forward;
    info.fWaveSampleInfo.fLoop.fStart = 0;
    info.fWaveSampleInfo.fLoop.fEnd = total;
}

std::unique_ptr<CABCWaveSample> ReadLOPWaveSample(NSPorter::CMedia& media,
                                                  CLOP2DecompressCallback& callback) {
    const CLOPAppChunk chunk = ReadLOPChunk(media);
    const CWaveSampleInfo audio = ReadMonoInfo(media);
    const int32_t total = std::max(TotalFramesOf(chunk), 1);
    // The sound is known to be there before memory is taken for the loop.
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    const bool hasSound = audio.fFrames > 0;
    if (hasSound) {
        EnterAIFFSoundData(reader, audio);
    }
    std::unique_ptr<CABCWaveSample> waveSample = CreateWaveSample(
        static_cast<uint32_t>(audio.fSampleRate), static_cast<uint32_t>(total), false, 16);
    waveSample->SetLoop(kSampleLoopMode_Forward, 0, total);
    if (hasSound) {
        CLOPSliceCopier copier(media, audio, *waveSample, callback);
        CopyPieces(chunk, total, copier, callback);
    }
    callback.ShouldStop(static_cast<uint32_t>(total));
    return waveSample;
}

void ReadLOPSlices(NSPorter::CMedia& media, CSliceSequence& sequence) {
    const CLOPAppChunk chunk = ReadLOPChunk(media);
    const double framesPerTick = chunk.GetFramesPerTick();
    std::vector<CSlice> slices;
    slices.reserve(chunk.fSlices.size() + 1);
    if (FrameOfTick(chunk.fSlices.front().fPPQPosition, framesPerTick) > 0) {
        // What lies in front of the first piece is silent.
        slices.push_back(MakeSlice(0, true));
    }
    for (const SLOPSliceRecord& record : chunk.fSlices) {
        slices.push_back(MakeSlice(FrameOfTick(record.fPPQPosition, framesPerTick), false));
    }
    sequence.InsertSlices(std::move(slices));
    sequence.UpdateSliceLengths();
    sequence.SetSensitivity(kSensitivityRange.fGreatest);
}

void ReadLOPSequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer) {
    const CLOPAppChunk chunk = ReadLOPChunk(media);
    sequencer.SetTimeSignature(4, 4);
    sequencer.SetBars(kBarsRange.Clip(chunk.GetBars()));
    sequencer.SetBeats(kBeatsRange.Clip(chunk.GetBeats()));
    sequencer.GetSampler().SetShaperOn(false);
    sequencer.SetDropMuted(true);
    sequencer.SetTempo(kTempoRange.Clip(chunk.fTempo));
    sequencer.SetTempoSync(chunk.GetBars() != 0 || chunk.GetBeats() != 0);
}

} // namespace NSLOPDLL

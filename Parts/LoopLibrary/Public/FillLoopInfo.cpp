#include "LoopLibrary/Public/FillLoopInfo.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/Render/Sequencer/LoopTempo.h"

#include <algorithm>
#include <limits>

namespace NSLOPDLL {

namespace {

// `units` are units of the time signature. The product fits 64 bits: no file states more units than
// 2^32.
int64_t PPQLength(int64_t units, int64_t denominator) {
    return LOP_PPQ * (4 * units) / denominator;
}

int32_t LowBits(int64_t value) {
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

} // namespace

int32_t ClampedPPQLength(int32_t bars, int32_t beats, int32_t numerator, int32_t denominator) {
    const int64_t length = PPQLength(int64_t{bars} * numerator + beats, denominator);
    return static_cast<int32_t>(std::clamp<int64_t>(length, std::numeric_limits<int32_t>::min(),
                                                    std::numeric_limits<int32_t>::max()));
}

int32_t PublicBitDepth(int32_t bitDepth) {
    switch (bitDepth) {
    case 8:
    case 16:
    case 20:
    case 22:
    case 24:
    case 32:
        return bitDepth;
    default:
        return 0;
    }
}

void FillInfoFromFile(const CTesselFileInfo& fileInfo, LOPInfo& info) {
    const CWaveSampleInfo& audio = fileInfo.fWaveSampleInfo;
    info.fChannels = audio.fChannels;
    info.fSampleRate = audio.fSampleRate;
    info.fSliceCount = fileInfo.fExportedSliceCount;

    const int64_t units =
        int64_t{fileInfo.fBars} * fileInfo.fTimeSignatureNumerator + int64_t{fileInfo.fBeats};
    if (units == 0) {
        NSLichen::RaiseWithTarget(NSLichen::XFormatViolation("zero loop length"),
                                  NSLichen::LopFileWord());
    }
    if (fileInfo.fTimeSignatureDenominator == 0) {
        NSLichen::RaiseWithTarget(NSLichen::XFormatViolation(""), NSLichen::LopFileWord());
    }
    info.fPPQLength = LowBits(PPQLength(units, fileInfo.fTimeSignatureDenominator));
    info.fStoredTempo = fileInfo.fTempo;
    const int64_t loopFrames = int64_t{audio.fLoop.fEnd} - audio.fLoop.fStart;
    info.fLoopTempo = LoopTempo(loopFrames, static_cast<uint32_t>(audio.fSampleRate), units);
    info.fTimeSignatureNumerator = fileInfo.fTimeSignatureNumerator;
    info.fTimeSignatureDenominator = fileInfo.fTimeSignatureDenominator;
}

} // namespace NSLOPDLL

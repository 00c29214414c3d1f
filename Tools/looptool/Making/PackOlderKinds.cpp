#include "looptool/Making/PackLoop.h"
#include "looptool/System/ToolFailure.h"

#include "LoopWriter/LOPFile.h"
#include "LoopWriter/TSLFile.h"

#include <algorithm>

namespace NSLoopTool {

namespace {

constexpr size_t kMostSlices = 1000;
constexpr uint32_t kTicksPerBar = 3840;
constexpr uint32_t kTicksPerBeat = 960;

void CheckOlderKind(const SMakePlan& plan) {
    const std::string prefix =
        plan.fName + ": cannot become a ." + std::string(plan.fKind) + " loop: ";
    if (plan.fAudio.fPlanes.size() != 1) {
        throw CToolFailure(prefix + "it is stereo, that kind is mono");
    }
    if (plan.fAudio.fBitDepth != 16) {
        throw CToolFailure(prefix + "it has 24 bits, that kind has 16 (--bits 16 shortens it)");
    }
    if (plan.fCuts.size() > kMostSlices) {
        throw CToolFailure(prefix + "that kind holds at most 1000 slices");
    }
    if (!plan.fTexts.empty()) {
        throw CToolFailure(prefix + "that kind holds no texts", kExitCode_Usage);
    }
}

void SetAudio(const SMakePlan& plan, NSLoopWriter::SAIFFAudio& audio) {
    audio.fCommon.fSampleRate = plan.fAudio.fSampleRate;
    audio.fSamples = plan.fAudio.fPlanes.front();
}

} // namespace

std::vector<uint8_t> PackTSL(const SMakePlan& plan) {
    CheckOlderKind(plan);
    NSLoopWriter::STSLFile file;
    SetAudio(plan, file.fAudio);
    file.SetLoop(static_cast<uint32_t>(plan.fLoopStart), static_cast<uint32_t>(plan.fLoopEnd));
    file.fTimeSignatureNumerator = static_cast<uint8_t>(plan.fSignature.fNumerator);
    file.fTimeSignatureDenominator = static_cast<uint8_t>(plan.fSignature.fDenominator);
    file.fBars = static_cast<uint16_t>(plan.fBars);
    file.fBeats = static_cast<uint8_t>(plan.fBeats);
    // A stored tempo other than the loop's own transposes a .tsl, so only a wish puts one there.
    file.fTempo = static_cast<uint32_t>(plan.fTempo);
    file.fTempoStored = plan.fIsTempoGiven ? 1 : 0;
    file.fSlices.clear();
    for (const SCut& cut : plan.fCuts) {
        NSLoopWriter::STSLSlice slice;
        slice.fKind = cut.fIsForced ? 2 : (cut.fIsHidden ? 1 : 0);
        slice.fMuted = cut.fIsMuted;
        slice.fPosition = static_cast<uint32_t>(cut.fFrame);
        slice.fLevel = static_cast<uint16_t>(cut.fLevel);
        file.fSlices.push_back(slice);
    }
    for (const auto& [key, value] : plan.fSettings) {
        FindSettingRow(key)->fSetTSL(file, value);
    }
    return WriteTSL(file);
}

// Pieces of the audio, each on the tick nearest to its frame; what stands before the first slice is
// a piece of its own, since a .lop plays nothing outside its pieces.
std::vector<uint8_t> PackLOP(const SMakePlan& plan) {
    CheckOlderKind(plan);
    if (plan.fSignature.fNumerator != 4 || plan.fSignature.fDenominator != 4) {
        throw CToolFailure("--signature: a .lop loop is always 4/4", kExitCode_Usage);
    }
    if (plan.fLoopStart != 0 || plan.fLoopEnd != plan.GetFrames()) {
        throw CToolFailure(plan.fName +
                               ": the loop is a part of the audio, which a .lop cannot say",
                           kExitCode_Usage);
    }
    NSLoopWriter::SLOPFile file;
    SetAudio(plan, file.fAudio);
    file.fPPQLength = static_cast<uint32_t>(plan.fBars) * kTicksPerBar +
                      static_cast<uint32_t>(plan.fBeats) * kTicksPerBeat;
    file.fTempo = static_cast<uint32_t>(plan.fTempo);
    std::vector<uint32_t> starts;
    for (const SCut& cut : plan.fCuts) {
        if (cut.fIsHidden || cut.fIsMuted) {
            throw CToolFailure(plan.fName + ": a .lop holds no hidden or muted slices",
                               kExitCode_Usage);
        }
        starts.push_back(static_cast<uint32_t>(cut.fFrame));
    }
    if (starts.front() != 0) {
        starts.insert(starts.begin(), 0);
    }
    // No audio without a frame comes this far.
    const auto frames = std::max<uint64_t>(1, static_cast<uint64_t>(plan.GetFrames()));
    file.fSlices.clear();
    for (size_t i = 0; i < starts.size(); ++i) {
        const uint32_t end = i + 1 < starts.size() ? starts[i + 1] : static_cast<uint32_t>(frames);
        const uint64_t tick = (starts[i] * uint64_t{file.fPPQLength} + frames / 2) / frames;
        const auto length = end - starts[i];
        file.fSlices.push_back({starts[i], length, static_cast<uint32_t>(tick)});
    }
    return WriteLOP(file);
}

std::vector<uint8_t> PackLoop(const SMakePlan& plan, const ProgressFunction& progress) {
    if (plan.fKind == kKind_LOP2) {
        return PackLOP2(plan, progress);
    }
    return plan.fKind == kKind_TSL ? PackTSL(plan) : PackLOP(plan);
}

} // namespace NSLoopTool

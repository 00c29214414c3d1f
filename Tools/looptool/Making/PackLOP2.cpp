#include "looptool/Making/PackLoop.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/LOP2File.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace NSLoopTool {

namespace {

constexpr size_t kMostTexts = 5;
constexpr size_t kMostTextBytes = 255; // what a host's record holds
constexpr uint8_t kFlag_Hidden = 1;
constexpr uint8_t kFlag_Forced = 2;
constexpr uint8_t kFlag_Muted = 4;

std::u16string TextUnits(const std::string& text) {
    try {
        return NSTextPackage::Utf8ToUtf16Default(text);
    } catch (const std::exception&) {
        throw CToolFailure("--text: not UTF-8", kExitCode_Usage);
    }
}

std::vector<uint8_t> Compress(const SMakePlan& plan, const ProgressFunction& progress) {
    const std::vector<std::vector<int32_t>>& planes = plan.fAudio.fPlanes;
    const size_t frames = plan.fAudio.GetFrameCount();
    NSLoopWriter::CTWIPCompressor compressor;
    for (size_t first = 0; first < frames; first += kLotFrames) {
        StopIfInterrupted();
        const auto count = static_cast<int64_t>(std::min(kLotFrames, frames - first));
        if (planes.size() == 2) {
            compressor.CompressStereo(count, planes[0].data() + first, planes[1].data() + first);
        } else {
            compressor.CompressMono(count, planes[0].data() + first);
        }
        progress(static_cast<int64_t>(first * 100 / frames));
    }
    return compressor.TakeStream();
}

NSLoopWriter::SLOP2Slice SliceOf(const SCut& cut) {
    NSLoopWriter::SLOP2Slice slice;
    slice.fPosition = static_cast<uint32_t>(cut.fFrame);
    slice.fLevel = static_cast<int16_t>(cut.fLevel);
    // The format has no slice that is both.
    const bool isHidden = cut.fIsHidden && !cut.fIsForced;
    slice.fFlags =
        static_cast<uint8_t>((isHidden ? kFlag_Hidden : 0) | (cut.fIsForced ? kFlag_Forced : 0) |
                             (cut.fIsMuted ? kFlag_Muted : 0));
    return slice;
}

} // namespace

void CheckTexts(const std::vector<std::string>& texts) {
    if (texts.size() > kMostTexts) {
        throw CToolFailure("--text: at most five times", kExitCode_Usage);
    }
    for (const std::string& text : texts) {
        if (text.size() > kMostTextBytes) {
            throw CToolFailure("--text: at most 255 bytes of UTF-8; this one has " +
                                   std::to_string(text.size()),
                               kExitCode_Usage);
        }
        TextUnits(text);
    }
}

std::vector<uint8_t> PackLOP2(const SMakePlan& plan, const ProgressFunction& progress) {
    NSLoopWriter::SLOP2File file;
    NSLoopWriter::SLOP2GeneralInfo& general = file.fGeneralInfo;
    general.fBars = static_cast<uint16_t>(plan.fBars);
    general.fBeats = static_cast<uint8_t>(plan.fBeats);
    general.fTimeSignatureNumerator = static_cast<uint8_t>(plan.fSignature.fNumerator);
    general.fTimeSignatureDenominator = static_cast<uint8_t>(plan.fSignature.fDenominator);
    general.fTempo = static_cast<uint32_t>(plan.fTempo);
    file.fSampleInfo.fSampleRate = static_cast<uint32_t>(plan.fAudio.fSampleRate);
    file.fSampleInfo.fChannels = static_cast<uint8_t>(plan.fAudio.fPlanes.size());
    file.fSampleInfo.fFrames = static_cast<int32_t>(plan.GetFrames());
    file.fSampleInfo.fLoopStart = static_cast<int32_t>(plan.fLoopStart);
    file.fSampleInfo.fLoopEnd = static_cast<int32_t>(plan.fLoopEnd);
    file.fBitDepth = plan.fAudio.fBitDepth;
    file.fSlices.clear();
    for (const SCut& cut : plan.fCuts) {
        file.fSlices.push_back(SliceOf(cut));
    }
    file.fTesselInfo.fExportedSliceCount = static_cast<int32_t>(std::count_if(
        plan.fCuts.begin(), plan.fCuts.end(), [](const SCut& cut) { return !cut.fIsHidden; }));
    for (const auto& [key, value] : plan.fSettings) {
        FindSettingRow(key)->fSetLOP2(file, value);
    }
    if (!plan.fTexts.empty()) {
        file.fCreatorInfo.emplace();
        for (size_t i = 0; i < plan.fTexts.size(); ++i) {
            file.fCreatorInfo->fTexts[i].fText = TextUnits(plan.fTexts[i]);
        }
    }
    try {
        file.fRawStream = Compress(plan, progress);
    } catch (const std::domain_error&) {
        // Full-scale noise at half the sample rate in 24 bits: no other audio is like that.
        throw CToolFailure(plan.fName + ": cannot be packed in 24 bits; --bits 16 shortens it");
    }
    return WriteLOP2(file);
}

} // namespace NSLoopTool

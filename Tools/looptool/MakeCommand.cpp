#include "looptool/AudioFile.h"
#include "looptool/COutputFile.h"
#include "looptool/CProgressBar.h"
#include "looptool/Commands.h"
#include "looptool/ToolFailure.h"

#include "LoopLibrary/Public/LoopLibrary.h"
#include "LoopLibrary/Render/Sequencer/LoopTempo.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/TSLFile.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace NSLoopTool {

namespace {

constexpr size_t kMaxCreatorTexts = 5;
constexpr size_t kMaxCreatorTextUnits = 255;
constexpr size_t kMaxOlderKindSlices = 1000;
constexpr size_t kMaxFrames = 0x7FFFFFFF;
constexpr uint32_t kTicksPerBar = 3840;
constexpr uint32_t kTicksPerBeat = 960;

[[noreturn]] void Misuse(const std::string& text) {
    throw CToolFailure(text, kExitCode_Usage);
}

struct SSignature {
    int32_t fNumerator;
    int32_t fDenominator;
};

SSignature ParseSignature(const std::string& text) {
    SSignature signature{0, 0};
    char rest = 0;
    if (std::sscanf(text.c_str(), "%2d/%2d%c", &signature.fNumerator, &signature.fDenominator,
                    &rest) != 2 ||
        std::min(signature.fNumerator, signature.fDenominator) < 1 ||
        std::max(signature.fNumerator, signature.fDenominator) > 15) {
        Misuse("--signature: must be like 4/4, each number 1 to 15");
    }
    return signature;
}

// All that the kinds have in common, checked.
struct SMaking {
    SAudio fAudio;
    SSignature fSignature;
    int32_t fBars;
    int32_t fBeats;
    int32_t fTempo; // thousandths of a beat per minute
    bool fTempoGiven;
    std::vector<uint32_t> fSlices; // rising, none twice, at least one

    uint32_t GetFrames() const { return static_cast<uint32_t>(fAudio.GetFrameCount()); }
};

std::vector<uint32_t> CheckedSlices(const SMakeOptions& options, size_t frames) {
    std::vector<uint32_t> slices = options.fSlices;
    if (slices.empty()) {
        slices.push_back(0);
    }
    std::sort(slices.begin(), slices.end());
    slices.erase(std::unique(slices.begin(), slices.end()), slices.end());
    if (slices.back() >= frames) {
        Misuse("--slices: frame " + std::to_string(slices.back()) + " lies behind the audio of " +
               std::to_string(frames) + " frames");
    }
    return slices;
}

void ConvertDepth(SAudio& audio, int32_t bits) {
    if (bits == 0 || bits == audio.fBitDepth) {
        return;
    }
    for (std::vector<int32_t>& plane : audio.fPlanes) {
        for (int32_t& sample : plane) {
            sample = bits == 16 ? sample >> 8 : sample * 256;
        }
    }
    audio.fBitDepth = bits;
}

SMaking Prepare(const SMakeOptions& options) {
    SMaking making{};
    making.fSignature = ParseSignature(options.fSignature);
    making.fBars = options.fBars;
    making.fBeats = options.fBeats;
    if (making.fBars == 0 && making.fBeats == 0) {
        Misuse("--bars or --beats: the loop's length is needed");
    }
    {
        CProgressBar bar("reading " + options.fAudio);
        making.fAudio =
            ReadAudioFile(options.fAudio, [&bar](int64_t percent) { bar.Show(percent); });
    }
    ConvertDepth(making.fAudio, options.fBits);
    const size_t frames = making.fAudio.GetFrameCount();
    if (frames > kMaxFrames) {
        throw CToolFailure(options.fAudio + ": too long for a loop file");
    }
    if (making.fAudio.fSampleRate < 1000 || making.fAudio.fSampleRate > 1000000) {
        throw CToolFailure(options.fAudio + ": its sample rate is not 1000 to 1000000");
    }
    making.fSlices = CheckedSlices(options, frames);
    making.fTempoGiven = options.fTempo != 0.0;
    making.fTempo =
        making.fTempoGiven
            ? static_cast<int32_t>(std::lround(options.fTempo * 1000.0))
            : std::clamp<int32_t>(
                  NSLOPDLL::LoopTempo(static_cast<int64_t>(frames),
                                      static_cast<uint32_t>(making.fAudio.fSampleRate),
                                      int64_t{making.fBars} * making.fSignature.fNumerator +
                                          making.fBeats),
                  LOP_MIN_TEMPO, LOP_MAX_TEMPO);
    return making;
}

NSLoopWriter::SLOP2CreatorInfo CreatorInfo(const std::vector<std::string>& texts) {
    if (texts.size() > kMaxCreatorTexts) {
        Misuse("--text: at most five times");
    }
    NSLoopWriter::SLOP2CreatorInfo info;
    for (size_t i = 0; i < texts.size(); ++i) {
        std::u16string& text = info.fTexts[i].fText;
        try {
            text = NSTextPackage::Utf8ToUtf16Default(texts[i]);
        } catch (const std::exception&) {
            Misuse("--text: not UTF-8");
        }
        if (text.size() > kMaxCreatorTextUnits) {
            Misuse("--text: at most 255 characters");
        }
    }
    return info;
}

std::vector<uint8_t> MakeLOP2(const SMakeOptions& options, const SMaking& making) {
    NSLoopWriter::SLOP2File file;
    NSLoopWriter::SLOP2GeneralInfo& general = file.fGeneralInfo;
    general.fBars = static_cast<uint16_t>(making.fBars);
    general.fBeats = static_cast<uint8_t>(making.fBeats);
    general.fTimeSignatureNumerator = static_cast<uint8_t>(making.fSignature.fNumerator);
    general.fTimeSignatureDenominator = static_cast<uint8_t>(making.fSignature.fDenominator);
    general.fTempo = static_cast<uint32_t>(making.fTempo);
    file.fTesselInfo.fExportedSliceCount = static_cast<int32_t>(making.fSlices.size());
    file.fSampleInfo.fSampleRate = static_cast<uint32_t>(making.fAudio.fSampleRate);
    file.fBitDepth = making.fAudio.fBitDepth;
    file.fLeft = making.fAudio.fPlanes.front();
    if (making.fAudio.fPlanes.size() == 2) {
        file.fRight = making.fAudio.fPlanes.back();
    }
    file.fSlices.clear();
    for (const uint32_t position : making.fSlices) {
        NSLoopWriter::SLOP2Slice slice;
        slice.fPosition = position;
        file.fSlices.push_back(slice);
    }
    if (!options.fTexts.empty()) {
        file.fCreatorInfo = CreatorInfo(options.fTexts);
    }
    try {
        return WriteLOP2(file);
    } catch (const std::domain_error&) {
        // Full-scale noise at half the sample rate in 24 bits: no other audio is like that.
        throw CToolFailure(options.fAudio + ": cannot be packed in 24 bits; --bits 16 shortens it");
    }
}

void CheckOlderKind(const SMakeOptions& options, const SMaking& making) {
    const std::string prefix = options.fAudio + ": cannot become a ." + options.fKind + " loop: ";
    if (making.fAudio.fPlanes.size() != 1) {
        throw CToolFailure(prefix + "it is stereo, that kind is mono");
    }
    if (making.fAudio.fBitDepth != 16) {
        throw CToolFailure(prefix + "it has 24 bits, that kind has 16 (--bits 16 shortens it)");
    }
    if (making.fSlices.size() > kMaxOlderKindSlices) {
        Misuse("--slices: that kind holds at most 1000");
    }
    if (!options.fTexts.empty()) {
        Misuse("--text: that kind holds no texts");
    }
}

void SetAudio(const SMaking& making, NSLoopWriter::SAIFFAudio& audio) {
    audio.fCommon.fSampleRate = making.fAudio.fSampleRate;
    audio.fSamples = making.fAudio.fPlanes.front();
}

std::vector<uint8_t> MakeTSL(const SMaking& making) {
    NSLoopWriter::STSLFile file;
    SetAudio(making, file.fAudio);
    file.SetLoop(0, making.GetFrames());
    file.fTimeSignatureNumerator = static_cast<uint8_t>(making.fSignature.fNumerator);
    file.fTimeSignatureDenominator = static_cast<uint8_t>(making.fSignature.fDenominator);
    file.fBars = static_cast<uint16_t>(making.fBars);
    file.fBeats = static_cast<uint8_t>(making.fBeats);
    // A stored tempo other than the loop's own transposes a .tsl, so only a wish puts one there.
    file.fTempo = static_cast<uint32_t>(making.fTempo);
    file.fTempoStored = making.fTempoGiven ? 1 : 0;
    file.fSlices.clear();
    for (const uint32_t position : making.fSlices) {
        NSLoopWriter::STSLSlice slice;
        slice.fPosition = position;
        file.fSlices.push_back(slice);
    }
    return WriteTSL(file);
}

// Pieces of the audio, each on the tick nearest to its frame; what stands before the first slice is
// a piece of its own, since a .lop plays nothing outside its pieces.
std::vector<uint8_t> MakeLOP(const SMaking& making) {
    if (making.fSignature.fNumerator != 4 || making.fSignature.fDenominator != 4) {
        Misuse("--signature: a .lop loop is always 4/4");
    }
    NSLoopWriter::SLOPFile file;
    SetAudio(making, file.fAudio);
    file.fPPQLength = static_cast<uint32_t>(making.fBars) * kTicksPerBar +
                      static_cast<uint32_t>(making.fBeats) * kTicksPerBeat;
    file.fTempo = static_cast<uint32_t>(making.fTempo);
    std::vector<uint32_t> starts = making.fSlices;
    if (starts.front() != 0) {
        starts.insert(starts.begin(), 0);
    }
    const uint64_t frames = std::max<uint64_t>(making.GetFrames(), 1);
    file.fSlices.clear();
    for (size_t i = 0; i < starts.size(); ++i) {
        const uint32_t end = i + 1 < starts.size() ? starts[i + 1] : making.GetFrames();
        const uint64_t tick = (starts[i] * uint64_t{file.fPPQLength} + frames / 2) / frames;
        file.fSlices.push_back({starts[i], end - starts[i], static_cast<uint32_t>(tick)});
    }
    return WriteLOP(file);
}

} // namespace

void RunMake(const SMakeOptions& options) {
    const SMaking making = Prepare(options);
    std::vector<uint8_t> bytes;
    if (options.fKind == "lop2") {
        bytes = MakeLOP2(options, making);
    } else {
        CheckOlderKind(options, making);
        bytes = options.fKind == "tsl" ? MakeTSL(making) : MakeLOP(making);
    }
    COutputFile output(options.fOutput);
    output.Write(bytes.data(), bytes.size());
    output.Commit();
}

} // namespace NSLoopTool

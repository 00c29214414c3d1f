#include "Tests/File/LoadTools.h"

#include "Failure/Chain/PartKeys.h"
#include "Failure/Classes/XClasses.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

namespace NSLOPDLL {

namespace {

template <class X>
bool Is(const std::exception& failure) {
    return dynamic_cast<const X*>(&failure) != nullptr;
}

std::string ClassName(const std::exception& failure) {
    return Is<NSLichen::XFormatViolation>(failure)     ? "XFormatViolation"
           : Is<NSLichen::XUnsupportedFormat>(failure) ? "XUnsupportedFormat"
           : Is<NSLichen::XVersionTooNew>(failure)     ? "XVersionTooNew"
           : Is<NSLichen::XRead>(failure)              ? "XRead"
           : Is<NSLichen::XAbort>(failure)             ? "XAbort"
           : Is<std::domain_error>(failure)            ? "domain_error"
                                                       : "another class";
}

std::string TargetWord(const std::exception& failure) {
    const auto* body = dynamic_cast<const NSLichen::CExceptionBodyMixin*>(&failure);
    if (body != nullptr && !body->fItems.empty()) {
        for (const NSLichen::CFailurePart& part : body->fItems.front().fParts) {
            if (part.fKey == NSLichen::TargetObjectTypeKey()) {
                return std::string("[") + part.fValue.GetWord().GetText() + "]";
            }
        }
    }
    return "";
}

template <class... Values>
Numbers Collect(Values... values) {
    return {static_cast<double>(values)...};
}

} // namespace

std::string OutcomeOf(const std::function<void()>& action) {
    try {
        action();
        return "loaded";
    } catch (const std::exception& failure) {
        return ClassName(failure) + TargetWord(failure) + " " + failure.what();
    }
}

SLoaded Load(const Bytes& bytes, size_t stopAt) {
    // A block of exactly the file's size, so that the sanitizers see any step beyond it.
    const auto block = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), std::as_const(block).get());
    SLoaded loaded;
    CNotingCallback callback;
    callback.fStopAt = stopAt;
    std::string step = "open: ";
    const std::string outcome = OutcomeOf([&] {
        const CTesselFile file(&media);
        file.GetFileInfo(loaded.fInfo);
        step = "audio: ";
        loaded.fAudio = file.ReadWaveSample(callback);
        loaded.fSlices = std::make_unique<CSliceSequence>(loaded.fAudio.get());
        loaded.fSequencer = std::make_unique<CTesselSequencer>(loaded.fAudio.get());
        step = "slices: ";
        file.ReadSlices(*loaded.fSlices);
        step = "settings: ";
        file.ReadSequencerSettings(*loaded.fSequencer);
        step = "edit: ";
        file.ReadEditSettings(loaded.fEditSettings);
        step = "creator: ";
        if (file.GetKind() == kFileKind_LOP2) {
            loaded.fCreatorInfo = file.ReadCreatorInfo();
        }
        step = "";
    });
    loaded.fOutcome = step + outcome;
    loaded.fReports = callback.fReports;
    return loaded;
}

void CheckReports(const Bytes& bytes, const std::vector<uint32_t>& reports,
                  const std::string& stopped) {
    for (size_t stopAt = 0; stopAt < reports.size(); ++stopAt) {
        const SLoaded loaded = Load(bytes, stopAt);
        EXPECT_EQ(loaded.fOutcome, stopAt + 1 == reports.size() ? "loaded" : stopped);
        const auto end = reports.begin() + static_cast<std::ptrdiff_t>(stopAt) + 1;
        EXPECT_EQ(loaded.fReports, std::vector<uint32_t>(reports.begin(), end));
    }
}

ChunkEdit Without(const char* id) {
    return [=](SIFFChunk& root) { LeaveOutChunk(root, ID(id)); };
}

ChunkEdit Cut(const char* id, size_t size) {
    return [=](SIFFChunk& root) { TruncateChunk(root, ID(id), size); };
}

ChunkEdit Poke(const char* id, int64_t offset, int64_t width, int64_t value) {
    return [=](SIFFChunk& root) {
        Bytes& body = FindChunk(root, ID(id)).fBody;
        int64_t rest = value;
        for (int64_t i = width; i-- > 0; rest >>= 8) {
            body.at(static_cast<size_t>(offset + i)) = static_cast<uint8_t>(rest);
        }
    };
}

NSPorter::CMemoryMedia MediaOver(const Bytes& bytes) {
    return {static_cast<int64_t>(bytes.size()), bytes.data()};
}

uint32_t ID(const char* id) {
    return NSPorter::DecodeBigEndian(reinterpret_cast<const uint8_t*>(id));
}

std::vector<int32_t> Samples(const CABCWaveSample& sample) {
    std::vector<int32_t> samples;
    for (uint32_t frame = 0; frame < sample.GetFrameCount(); ++frame) {
        for (int32_t channel = 1; channel <= (sample.IsStereo() ? 2 : 1); ++channel) {
            samples.push_back(sample.Get24BitSample(static_cast<int32_t>(frame), channel));
        }
    }
    return samples;
}

Numbers NumbersOf(const CTesselFileInfo& info) {
    const CWaveSampleInfo& audio = info.fWaveSampleInfo;
    return Collect(audio.fChannels, audio.fBitDepth, audio.fSampleRate, audio.fFrames,
                   audio.fLoop.fMode, audio.fLoop.fDirection, audio.fLoop.fStart, audio.fLoop.fEnd,
                   info.fSliceCount, info.fExportedSliceCount, info.fTempo, info.fBars, info.fBeats,
                   info.fTimeSignatureNumerator, info.fTimeSignatureDenominator,
                   info.fCompressionRatio, info.fLoopPercent, info.fExportedSize);
}

Numbers NumbersOf(const CTesselSequencer& sequencer) {
    const CSamplerSettings& sound = sequencer.GetSampler().GetSettings();
    return Collect(sequencer.GetBars(), sequencer.GetBeats(), sequencer.GetTimeSignatureNumerator(),
                   sequencer.GetTimeSignatureDenominator(), sequencer.GetTempo(),
                   sequencer.IsTempoSynced(), sequencer.GetDropMuted(), sound.fGain,
                   sound.fTranspose, sound.fShaperOn, sound.fShaperAttack, sound.fShaperDecay,
                   sound.fShaperStretch, sound.fCompressorOn, sound.fCompressorThreshold,
                   sound.fCompressorRatio, sound.fCompressorAttack, sound.fCompressorRelease);
}

SliceNumbers NumbersOf(const CSliceSequence& sequence) {
    SliceNumbers numbers;
    for (const CSlice& slice : sequence.GetSlices()) {
        numbers.push_back(
            {slice.GetPosition(), slice.GetLevel(), slice.GetKind(), slice.IsMuted()});
    }
    return numbers;
}

} // namespace NSLOPDLL

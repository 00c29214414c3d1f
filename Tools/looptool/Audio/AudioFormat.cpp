#include "looptool/Audio/AudioFormat.h"

#include "looptool/Console/SafeText.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace NSLoopTool {

namespace {

struct SSuffix {
    const char* fText;
    EContainer fContainer;
};

// The first of each container is the one that is written.
constexpr std::array kSuffixes = {
    SSuffix{".wav", EContainer::kWav},   SSuffix{".aiff", EContainer::kAiff},
    SSuffix{".flac", EContainer::kFlac}, SSuffix{".raw", EContainer::kRaw},
    SSuffix{".wave", EContainer::kWav},  SSuffix{".aif", EContainer::kAiff},
    SSuffix{".aifc", EContainer::kAiff}, SSuffix{".pcm", EContainer::kRaw},
};

const SSuffix* FindSuffix(std::string suffix) {
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const auto* const found =
        std::find_if(kSuffixes.begin(), kSuffixes.end(),
                     [&suffix](const SSuffix& row) { return suffix == row.fText; });
    return found == kSuffixes.end() ? nullptr : found;
}

EContainer ChooseContainer(const SFormatWish& wish, const std::string& path) {
    if (!wish.fContainer.empty()) {
        return FindSuffix("." + wish.fContainer)->fContainer;
    }
    const std::string suffix = ArgumentOfPath(PathOfArgument(path).extension());
    if (path == "-" || suffix.empty()) {
        return EContainer::kWav;
    }
    const SSuffix* const found = FindSuffix(suffix);
    if (found == nullptr) {
        throw CToolFailure(SafeText(path) + ": no kind of audio file has this suffix; use .wav, "
                                            ".aiff, .flac or .raw, or say --format",
                           kExitCode_Usage);
    }
    return found->fContainer;
}

} // namespace

size_t SAudioFormat::GetSampleBytes() const {
    switch (fEncoding) {
    case EEncoding::kPcm16:
        return 2;
    case EEncoding::kPcm24:
        return 3;
    default:
        return 4;
    }
}

std::string SAudioFormat::GetSuffix() const {
    const auto* const found =
        std::find_if(kSuffixes.begin(), kSuffixes.end(),
                     [this](const SSuffix& row) { return row.fContainer == fContainer; });
    return found->fText;
}

SAudioFormat ChooseAudioFormat(const SFormatWish& wish, const std::string& path, EEncoding usual) {
    SAudioFormat format;
    format.fContainer = ChooseContainer(wish, path);
    const bool isFlac = format.fContainer == EContainer::kFlac;
    if (isFlac && wish.fBits == "float") {
        throw CToolFailure("--bits: FLAC holds 16 or 24 bits, not floats", kExitCode_Usage);
    }
    if (wish.fBits.empty()) {
        format.fEncoding = isFlac && usual == EEncoding::kFloat ? EEncoding::kPcm24 : usual;
    } else {
        format.fEncoding = wish.fBits == "16"   ? EEncoding::kPcm16
                           : wish.fBits == "24" ? EEncoding::kPcm24
                                                : EEncoding::kFloat;
    }
    return format;
}

} // namespace NSLoopTool

#include "Support/Version/VersionText.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Glue/FileLibFailures.h"

#include <array>
#include <charconv>
#include <string_view>

namespace NSSupport {

using NSPorter::SVersionRecord;

namespace {

constexpr std::string_view kStageLetters = "dabf";
constexpr std::string_view kBuildWord = " build ";

bool IsDefault(const SVersionRecord& version) {
    return version.fMajor == 0 && version.fMinor == 0 && version.fBugFix == 0 &&
           version.fStage == NSPorter::kVersionStage_Final && version.fBuild == 0 &&
           version.fExtra == 0;
}

std::string NumberPart(const SVersionRecord& version) {
    return ReplacePlaceholders(version.fBugFix != 0 ? "^0.^1.^2" : "^0.^1",
                               {std::to_string(version.fMajor), std::to_string(version.fMinor),
                                std::to_string(version.fBugFix)});
}

// Takes a text apart from its front.
class CVersionScanner {
public:
    explicit CVersionScanner(std::string_view text) : fRest(text) {}

    bool IsAtEnd() const { return fRest.empty(); }

    bool Take(std::string_view text) {
        if (!fRest.starts_with(text)) {
            return false;
        }
        fRest.remove_prefix(text.size());
        return true;
    }

    uint32_t TakeNumber() {
        uint32_t number = 0;
        const auto [end, error] =
            std::from_chars(fRest.data(), fRest.data() + fRest.size(), number);
        Check(error == std::errc());
        fRest.remove_prefix(static_cast<size_t>(end - fRest.data()));
        return number;
    }

    // 1 to 4.
    uint32_t TakeStage() {
        const size_t index =
            fRest.empty() ? std::string_view::npos : kStageLetters.find(fRest.front());
        Check(index != std::string_view::npos);
        fRest.remove_prefix(1);
        return static_cast<uint32_t>(index) + NSPorter::kVersionStage_Development;
    }

    static void Check(bool sound) {
        if (!sound) {
            NSLichen::Raise(NSLichen::XFormatViolation("Bad version string"));
        }
    }

private:
    std::string_view fRest;
};

} // namespace

std::string ReplacePlaceholders(const std::string& pattern,
                                const std::vector<std::string>& arguments) {
    std::string result;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const bool isPlaceholder = pattern[i] == '^' && i + 1 < pattern.size() &&
                                   pattern[i + 1] >= '0' && pattern[i + 1] <= '9' &&
                                   static_cast<size_t>(pattern[i + 1] - '0') < arguments.size();
        if (isPlaceholder) {
            ++i;
            result += arguments[static_cast<size_t>(pattern[i] - '0')];
        } else {
            result += pattern[i];
        }
    }
    return result;
}

std::string FormatVersion(const SVersionRecord& version, const std::string& fallback,
                          bool withBuild) {
    if (IsDefault(version)) {
        return fallback;
    }
    std::string numbers = NumberPart(version);
    if (version.fStage == NSPorter::kVersionStage_Final && version.fBuild == 0) {
        return numbers;
    }
    const std::string build = std::to_string(version.fBuild);
    // A record that was not read from a file may hold any stage.
    const bool isKnown = version.fStage >= NSPorter::kVersionStage_Development &&
                         version.fStage <= NSPorter::kVersionStage_Final;
    const std::string letter = isKnown ? std::string(1, kStageLetters[version.fStage - 1]) : "?";
    std::string result = ReplacePlaceholders("^0^1^2", {numbers, letter, build});
    return withBuild ? ReplacePlaceholders("^0 build ^1", {result, build}) : result;
}

SVersionRecord ParseVersion(const std::string& text, const std::string& fallback) {
    SVersionRecord version;
    if (text == fallback) {
        return version;
    }
    CVersionScanner scanner(text);
    version.fMajor = scanner.TakeNumber();
    CVersionScanner::Check(scanner.Take("."));
    version.fMinor = scanner.TakeNumber();
    if (scanner.Take(".")) {
        version.fBugFix = scanner.TakeNumber();
    }
    if (!scanner.IsAtEnd()) {
        version.fStage = scanner.TakeStage();
        version.fBuild = scanner.TakeNumber();
        if (scanner.Take(kBuildWord)) {
            CVersionScanner::Check(scanner.TakeNumber() == version.fBuild);
        }
    }
    CVersionScanner::Check(scanner.IsAtEnd());
    return version;
}

SVersionRecord ReadShortVersion(NSLichen::IByteReader& reader, int64_t position) {
    constexpr uint8_t kMagic = 188;
    std::array<uint8_t, 5> bytes{};
    NSFileLib::ThrowIfByteStreamError(reader.Read(position, bytes.size(), bytes.data()));
    if (bytes[0] != kMagic) {
        NSLichen::Raise(NSLichen::XFormatViolation("ReadVersion bad version file magic"));
    }
    SVersionRecord version;
    version.fMajor = bytes[1];
    version.fMinor = bytes[2];
    version.fBugFix = bytes[3];
    return version;
}

} // namespace NSSupport

#pragma once

#include "looptool/Loop/LoopSettings.h"
#include "looptool/Making/MakePlan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// What is known of a loop before its audio is read, from the command line or a file.
struct SKnownLoop {
    std::string fKind; // empty: not said
    std::optional<int32_t> fBars;
    std::optional<int32_t> fBeats;
    std::optional<SSignature> fSignature;
    std::optional<double> fTempo; // beats of the time signature per minute
    std::optional<int64_t> fLoopStart;
    std::optional<int64_t> fLoopEnd;
    std::vector<std::string> fTexts;
    CLoopSettings fSettings;
};

/// Reads the JSON that `info --settings` prints, or only its "settings". CToolFailure names the
/// file and the key for what is not such a thing, unknown or out of range.
SKnownLoop ReadSettingsFile(const std::string& path);

/// "6/8", each number 1 to 15.
std::optional<SSignature> ParseSignature(const std::string& text);

} // namespace NSLoopTool

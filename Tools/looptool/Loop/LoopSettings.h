#pragma once

#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/TSLFile.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace NSPorter {
class CMedia;
}

namespace NSLoopTool {

/// The kinds of loop file, by their names on the command line and in JSON.
constexpr std::string_view kKind_LOP2 = "lop2";
constexpr std::string_view kKind_TSL = "tsl";
constexpr std::string_view kKind_LOP = "lop";

/// The kind of the file, empty for no loop file.
std::string_view KindOfMedia(NSPorter::CMedia& media);
std::string_view KindOfBytes(const std::vector<uint8_t>& bytes);

/// The values that a setting may have, ends included: the library's where it judges them.
struct SSettingRange {
    int64_t fLeast;
    int64_t fGreatest;

    constexpr SSettingRange(int64_t least, int64_t greatest) : fLeast(least), fGreatest(greatest) {}
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr SSettingRange(NSLOPDLL::SRange range)
        : fLeast(range.fLeast), fGreatest(range.fGreatest) {}

    constexpr bool Holds(int64_t value) const { return value >= fLeast && value <= fGreatest; }
};

/// One stored setting: its key in JSON ("equalizer.low_cut" is the member "low_cut" of the object
/// "equalizer"), its range as integers in the file's own units, and its homes in the writers'
/// records, null where a kind has none.
struct SSettingRow {
    const char* fKey;
    SSettingRange fRange; // 0 to 1: a flag
    const char* fHelp;
    void (*fSetLOP2)(NSLoopWriter::SLOP2File& file, int64_t value);
    void (*fSetTSL)(NSLoopWriter::STSLFile& file, int64_t value);

    bool IsFlag() const { return fRange.fLeast == 0 && fRange.fGreatest == 1; }
    bool IsOfKind(std::string_view kind) const;
    /// The option of `make`: "--equalizer-low-cut".
    std::string GetOption() const;
};

std::span<const SSettingRow> SettingRows();
/// Null for an unknown key.
const SSettingRow* FindSettingRow(std::string_view key);

/// Settings by key.
using CLoopSettings = std::map<std::string, int64_t, std::less<>>;

/// Every setting that the file stores, as it stores it. The file must be one that loads.
CLoopSettings ReadLoopSettings(const std::vector<uint8_t>& bytes);

} // namespace NSLoopTool

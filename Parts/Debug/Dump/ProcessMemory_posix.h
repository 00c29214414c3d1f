#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace NSDebugPackage {

/// Mappings begin and end at multiples of it, also where the pages of the system are larger.
constexpr uint64_t kPageSize = 4096;

struct SMemoryRange {
    uint64_t fStart = 0;
    uint64_t fEnd = 0;
};

/// One mapping of the own process.
struct SMapping : SMemoryRange {
    uint32_t fFlags = 0; // PF_R, PF_W, PF_X
    bool fShared = false;
    uint64_t fFileOffset = 0;
    std::string fPath; // a file, a word in brackets, or empty
    /// Holds pages that no file holds.
    bool fModified = false;

    uint64_t GetSize() const { return fEnd - fStart; }
    bool IsFile() const { return !fPath.empty() && fPath.front() == '/'; }
};

/// By ascending address. Empty when the system does not tell.
std::vector<SMapping> ReadMappings();

/// The parts of the mappings that a dump holds, apart from one another and ascending: the stacks
/// from the given stack pointers on, the first pages of code files, and the modified mappings
/// except for great ones.
std::vector<SMemoryRange> ChooseDumpedRanges(const std::vector<SMapping>& mappings,
                                             const std::vector<uint64_t>& stackPointers);

/// A whole small file, such as those of /proc.
std::string ReadSmallFile(const std::string& path);

} // namespace NSDebugPackage

#include "Debug/Dump/ProcessMemory_posix.h"

#include <elf.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace NSDebugPackage {

namespace {

// Code may use this much below its stack pointer.
constexpr uint64_t kRedZone = 128;
constexpr uint64_t kLargestStackPart = uint64_t{8} << 20;
constexpr uint64_t kLargestWholeMapping = uint64_t{16} << 20;
constexpr uint64_t kLargestDump = uint64_t{256} << 20;

// "7f..-7f.. rw-p 00000000 08:01 1234   /path"
bool ParseMapping(const std::string& line, SMapping& mapping) {
    unsigned long start = 0;
    unsigned long end = 0;
    unsigned long offset = 0;
    char access[5] = {};
    int used = 0;
    if (std::sscanf(line.c_str(), "%lx-%lx %4s %lx %*s %*s%n", &start, &end, access, &offset,
                    &used) != 4 ||
        used == 0) {
        return false;
    }
    mapping.fStart = start;
    mapping.fEnd = end;
    mapping.fFileOffset = offset;
    mapping.fFlags = (access[0] == 'r' ? PF_R : 0U) | (access[1] == 'w' ? PF_W : 0U) |
                     (access[2] == 'x' ? PF_X : 0U);
    mapping.fShared = access[3] == 's';
    const size_t path = line.find_first_not_of(' ', static_cast<size_t>(used));
    if (path != std::string::npos) {
        mapping.fPath = line.substr(path);
    }
    return true;
}

// "Anonymous:   12 kB"
bool IsModifiedField(const std::string& line) {
    unsigned long kilobytes = 0;
    return (std::sscanf(line.c_str(), "Anonymous: %lu", &kilobytes) == 1 ||
            std::sscanf(line.c_str(), "Swap: %lu", &kilobytes) == 1) &&
           kilobytes != 0;
}

void AddStacks(const std::vector<SMapping>& mappings, const std::vector<uint64_t>& stackPointers,
               std::vector<SMemoryRange>& ranges) {
    for (const uint64_t pointer : stackPointers) {
        for (const SMapping& mapping : mappings) {
            if (pointer >= mapping.fStart && pointer < mapping.fEnd) {
                const uint64_t low = pointer - std::min(pointer, kRedZone);
                const uint64_t start = std::max(mapping.fStart, low & ~(kPageSize - 1));
                ranges.push_back(
                    {start, start + std::min(mapping.fEnd - start, kLargestStackPart)});
            }
        }
    }
}

} // namespace

std::vector<SMapping> ReadMappings() {
    std::vector<SMapping> mappings;
    std::ifstream file("/proc/self/smaps");
    for (std::string line; std::getline(file, line);) {
        SMapping mapping;
        if (ParseMapping(line, mapping)) {
            mappings.push_back(mapping);
        } else if (!mappings.empty() && IsModifiedField(line)) {
            mappings.back().fModified = true;
        }
    }
    return mappings;
}

std::vector<SMemoryRange> ChooseDumpedRanges(const std::vector<SMapping>& mappings,
                                             const std::vector<uint64_t>& stackPointers) {
    std::vector<SMemoryRange> ranges;
    AddStacks(mappings, stackPointers, ranges);
    uint64_t total = 0;
    for (const SMapping& mapping : mappings) {
        uint64_t size = 0;
        const bool isReadable = (mapping.fFlags & PF_R) != 0;
        if (isReadable && !mapping.fShared && (mapping.fModified || mapping.fPath == "[vdso]") &&
            mapping.GetSize() <= kLargestWholeMapping) {
            size = mapping.GetSize();
        } else if (isReadable && mapping.IsFile() && mapping.fFileOffset == 0) {
            size = std::min(kPageSize, mapping.GetSize());
        }
        if (size != 0 && total + size <= kLargestDump) {
            total += size;
            ranges.push_back({mapping.fStart, mapping.fStart + size});
        }
    }
    std::sort(ranges.begin(), ranges.end(),
              [](const SMemoryRange& a, const SMemoryRange& b) { return a.fStart < b.fStart; });
    std::vector<SMemoryRange> apart;
    for (const SMemoryRange& range : ranges) {
        if (!apart.empty() && range.fStart < apart.back().fEnd) {
            apart.back().fEnd = std::max(apart.back().fEnd, range.fEnd);
        } else {
            apart.push_back(range);
        }
    }
    return apart;
}

std::string ReadSmallFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace NSDebugPackage

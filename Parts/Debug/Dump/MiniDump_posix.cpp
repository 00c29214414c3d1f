#include "Debug/Dump/CoreNotes_posix.h"
#include "Debug/Dump/DumpReport_posix.h"
#include "Debug/Dump/MiniDump.h"
#include "Debug/Dump/ProcessMemory_posix.h"
#include "Debug/Dump/ProcessThreads_posix.h"
#include "Debug/Dump/ThreadRegisters_posix.h"
#include "Debug/Platform/CDescriptor_posix.h"
#include "Debug/Platform/CNewFile_posix.h"
#include "Debug/Platform/WriteAll_posix.h"
#include "FileLib/Rules/PosixNameCodec.h"

#include <elf.h>
#include <fcntl.h>
#include <ucontext.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace NSDebugPackage {

namespace {

// The count of segments of an ELF file has 16 bits, and 0xFFFF means something else.
constexpr size_t kMostSegments = 0xFF00;

// A mapping cut at the ends of the ranges that are dumped: each piece is wholly dumped or not at
// all. Pieces that are not dumped tell the debugger what lies there.
void AppendPieces(const SMapping& mapping, const std::vector<SMemoryRange>& ranges,
                  std::vector<Elf64_Phdr>& segments) {
    const auto append = [&](uint64_t start, uint64_t end, bool dumped) {
        if (start < end) {
            Elf64_Phdr segment{};
            segment.p_type = PT_LOAD;
            segment.p_flags = mapping.fFlags;
            segment.p_vaddr = start;
            segment.p_memsz = end - start;
            segment.p_filesz = dumped ? end - start : 0;
            segment.p_align = kPageSize;
            segments.push_back(segment);
        }
    };
    uint64_t position = mapping.fStart;
    auto range = std::upper_bound(
        ranges.begin(), ranges.end(), mapping.fStart,
        [](uint64_t value, const SMemoryRange& candidate) { return value < candidate.fEnd; });
    for (; range != ranges.end() && range->fStart < mapping.fEnd; ++range) {
        const uint64_t start = std::max(range->fStart, mapping.fStart);
        const uint64_t end = std::min(range->fEnd, mapping.fEnd);
        append(position, start, false);
        append(start, end, true);
        position = end;
    }
    append(position, mapping.fEnd, false);
}

std::vector<Elf64_Phdr> MakeSegments(const std::vector<SMapping>& mappings,
                                     const std::vector<SMemoryRange>& ranges) {
    std::vector<Elf64_Phdr> segments;
    for (const SMapping& mapping : mappings) {
        AppendPieces(mapping, ranges, segments);
    }
    if (segments.size() > kMostSegments) {
        std::erase_if(segments, [](const Elf64_Phdr& segment) { return segment.p_filesz == 0; });
        segments.resize(std::min(segments.size(), kMostSegments));
    }
    return segments;
}

Elf64_Ehdr MakeHeader(size_t segmentCount) {
    Elf64_Ehdr header{};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = ELFCLASS64;
    header.e_ident[EI_DATA] = ELFDATA2LSB; // on each processor that has dumps
    header.e_ident[EI_VERSION] = EV_CURRENT;
    header.e_type = ET_CORE;
    header.e_machine = kElfMachine;
    header.e_version = EV_CURRENT;
    header.e_phoff = sizeof header;
    header.e_ehsize = sizeof header;
    header.e_phentsize = sizeof(Elf64_Phdr);
    header.e_phnum = static_cast<uint16_t>(segmentCount);
    return header;
}

// What cannot be read, since it is gone by now or is not memory, becomes zeros.
bool WriteMemory(int file, int memory, const Elf64_Phdr& segment) {
    // Not on the stack: a handler of a fault may run on a small one of its own.
    std::vector<char> buffer(std::min<uint64_t>(segment.p_filesz, 65536));
    for (uint64_t done = 0; done < segment.p_filesz;) {
        const auto count =
            static_cast<size_t>(std::min<uint64_t>(buffer.size(), segment.p_filesz - done));
        const ssize_t got =
            pread(memory, buffer.data(), count, static_cast<off_t>(segment.p_vaddr + done));
        const size_t valid = got > 0 ? static_cast<size_t>(got) : 0;
        std::fill(buffer.data() + valid, buffer.data() + count, '\0');
        if (!WriteAll(file, buffer.data(), count)) {
            return false;
        }
        done += count;
    }
    return true;
}

bool WriteCore(int file, int memory, const ucontext_t& context, int signal) {
    const std::vector<SThreadState> threads = ReadThreads(context);
    const std::vector<SMapping> mappings = ReadMappings();
    std::vector<uint64_t> stackPointers;
    stackPointers.reserve(threads.size());
    for (const SThreadState& thread : threads) {
        stackPointers.push_back(thread.fStackPointer);
    }
    std::vector<Elf64_Phdr> segments =
        MakeSegments(mappings, ChooseDumpedRanges(mappings, stackPointers));
    const std::string notes = MakeCoreNotes(threads, mappings, signal);

    const Elf64_Ehdr header = MakeHeader(segments.size() + 1);
    Elf64_Phdr noteSegment{};
    noteSegment.p_type = PT_NOTE;
    noteSegment.p_offset = sizeof header + (segments.size() + 1) * sizeof noteSegment;
    noteSegment.p_filesz = notes.size();
    noteSegment.p_align = 4;
    const uint64_t headEnd = noteSegment.p_offset + notes.size();
    uint64_t offset = (headEnd + kPageSize - 1) & ~(kPageSize - 1);
    const std::string padding(offset - headEnd, '\0');
    for (Elf64_Phdr& segment : segments) {
        segment.p_offset = offset;
        offset += segment.p_filesz;
    }
    return WriteAll(file, &header, sizeof header) &&
           WriteAll(file, &noteSegment, sizeof noteSegment) &&
           WriteAll(file, segments.data(), segments.size() * sizeof(Elf64_Phdr)) &&
           WriteAll(file, notes.data(), notes.size()) &&
           WriteAll(file, padding.data(), padding.size()) &&
           std::all_of(segments.begin(), segments.end(), [&](const Elf64_Phdr& segment) {
               return WriteMemory(file, memory, segment);
           });
}

} // namespace

EDumpResult WriteProcessDump(const std::u16string& path, void* fault) {
    const std::string name = NSFileLibInternals::PosixFromNative(path);
    CNewFile file(name);
    if (!file.IsOpen()) {
        return file.GetError() == EEXIST ? EDumpResult::kNameTaken : EDumpResult::kFailed;
    }
    const CDescriptor memory(open("/proc/self/mem", O_RDONLY | O_CLOEXEC));
    // This frame and those of the callers stay as they are while their memory is written.
    ucontext_t here{};
    if (!memory.IsOpen() || getcontext(&here) != 0) {
        return EDumpResult::kFailed;
    }
    const auto* const context = fault != nullptr ? static_cast<ucontext_t*>(fault) : &here;
    // The context of a fault does not tell its signal; this is the usual one.
    const int signal = fault != nullptr ? SIGSEGV : 0;
    if (!WriteCore(file.Get(), memory.Get(), *context, signal) || !file.Finish()) {
        return EDumpResult::kFailed;
    }
    // Helpful, but no part of the dump.
    WriteDumpReport(name + ".txt");
    return EDumpResult::kWritten;
}

} // namespace NSDebugPackage

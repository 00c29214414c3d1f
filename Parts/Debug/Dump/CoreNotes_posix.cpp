#include "Debug/Dump/CoreNotes_posix.h"

#include <elf.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace NSDebugPackage {

namespace {

constexpr uint64_t kFileOffsetUnit = 4096;

std::string BytesOf(const void* data, size_t size) {
    return {static_cast<const char*>(data), size};
}

void AppendNumber(std::string& bytes, uint64_t value) {
    bytes += BytesOf(&value, sizeof value);
}

void PadTo4(std::string& bytes) {
    bytes.resize((bytes.size() + 3) & ~size_t{3});
}

void AppendNote(std::string& notes, uint32_t type, const std::string& content) {
    constexpr char kName[] = "CORE";
    const Elf64_Nhdr header = {sizeof kName, static_cast<uint32_t>(content.size()), type};
    notes += BytesOf(&header, sizeof header);
    notes += BytesOf(kName, sizeof kName);
    PadTo4(notes);
    notes += content;
    PadTo4(notes);
}

std::string MakeThreadStatus(const SThreadState& thread, int signal) {
    elf_prstatus status{};
    status.pr_info.si_signo = signal;
    status.pr_cursig = static_cast<short>(signal);
    status.pr_pid = thread.fThread;
    status.pr_ppid = getppid();
    status.pr_pgrp = getpgrp();
    std::memcpy(&status.pr_reg, &thread.fRegisters, sizeof thread.fRegisters);
    return BytesOf(&status, sizeof status);
}

std::string MakeProcessInfo() {
    elf_prpsinfo info{};
    info.pr_sname = 'R';
    info.pr_pid = getpid();
    info.pr_ppid = getppid();
    info.pr_pgrp = getpgrp();
    std::string name = ReadSmallFile("/proc/self/comm");
    name.resize(std::min({name.size(), name.find('\n'), sizeof info.pr_fname - 1}));
    std::copy(name.begin(), name.end(), info.pr_fname);
    std::string arguments = ReadSmallFile("/proc/self/cmdline");
    std::replace(arguments.begin(), arguments.end(), '\0', ' ');
    std::copy_n(arguments.begin(), std::min(arguments.size(), sizeof info.pr_psargs - 1),
                info.pr_psargs);
    return BytesOf(&info, sizeof info);
}

std::string MakeMappedFiles(const std::vector<SMapping>& mappings) {
    std::string ranges;
    std::string names;
    uint64_t count = 0;
    for (const SMapping& mapping : mappings) {
        if (mapping.IsFile()) {
            AppendNumber(ranges, mapping.fStart);
            AppendNumber(ranges, mapping.fEnd);
            AppendNumber(ranges, mapping.fFileOffset / kFileOffsetUnit);
            names += mapping.fPath + '\0';
            ++count;
        }
    }
    std::string content;
    AppendNumber(content, count);
    AppendNumber(content, kFileOffsetUnit);
    return content + ranges + names;
}

} // namespace

std::string MakeCoreNotes(const std::vector<SThreadState>& threads,
                          const std::vector<SMapping>& mappings, int signal) {
    std::string notes;
    for (size_t i = 0; i < threads.size(); ++i) {
        AppendNote(notes, NT_PRSTATUS, MakeThreadStatus(threads[i], i == 0 ? signal : 0));
        // Debuggers expect what concerns the whole process behind the first thread.
        if (i == 0) {
            AppendNote(notes, NT_PRPSINFO, MakeProcessInfo());
            AppendNote(notes, NT_AUXV, ReadSmallFile("/proc/self/auxv"));
            AppendNote(notes, NT_FILE, MakeMappedFiles(mappings));
        }
    }
    return notes;
}

} // namespace NSDebugPackage

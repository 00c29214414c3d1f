#include "Debug/Dump/ProcessThreads_posix.h"

#include "Debug/Dump/ProcessMemory_posix.h"
#include "Debug/Dump/ThreadRegisters_posix.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>
#include <string>

namespace NSDebugPackage {

namespace {

// The kernel's line holds the number of the call, its arguments, the stack pointer and the program
// counter, or just the word "running".
bool ReadCounters(pid_t thread, uint64_t& programCounter, uint64_t& stackPointer) {
    std::istringstream line(
        ReadSmallFile("/proc/self/task/" + std::to_string(thread) + "/syscall"));
    std::string word;
    uint64_t last[2] = {};
    int count = 0;
    while (line >> word) {
        char* end = nullptr;
        const uint64_t value = std::strtoull(word.c_str(), &end, 0);
        if (*end != '\0') {
            return false;
        }
        last[0] = last[1];
        last[1] = value;
        ++count;
    }
    stackPointer = last[0];
    programCounter = last[1];
    return count >= 3;
}

SThreadState ReadThread(pid_t thread) {
    SThreadState state;
    state.fThread = thread;
    uint64_t programCounter = 0;
    if (ReadCounters(thread, programCounter, state.fStackPointer)) {
        SetRegisters(programCounter, state.fStackPointer, state.fRegisters);
    } else {
        SetRegisters(0, 0, state.fRegisters);
    }
    return state;
}

} // namespace

std::vector<SThreadState> ReadThreads(const ucontext_t& context) {
    SThreadState own;
    own.fThread = gettid();
    own.fStackPointer = GetStackPointer(context);
    CopyRegisters(context, own.fRegisters);
    std::vector<SThreadState> threads = {own};

    DIR* const folder = opendir("/proc/self/task");
    if (folder == nullptr) {
        return threads;
    }
    while (const dirent* const entry = readdir(folder)) {
        const auto thread = static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10));
        if (thread > 0 && thread != own.fThread) {
            threads.push_back(ReadThread(thread));
        }
    }
    closedir(folder);
    return threads;
}

} // namespace NSDebugPackage

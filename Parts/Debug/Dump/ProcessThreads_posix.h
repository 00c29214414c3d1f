#pragma once

#include <sys/procfs.h>
#include <sys/ucontext.h>

#include <cstdint>
#include <vector>

namespace NSDebugPackage {

/// A thread of the own process, as far as it can be seen from another.
struct SThreadState {
    pid_t fThread = 0;
    elf_gregset_t fRegisters{};
    uint64_t fStackPointer = 0; // 0 when unknown
};

/// The calling thread first, with the registers of the context. Of another thread the program
/// counter and the stack pointer are known while it waits in the kernel, which is enough to begin
/// its stack trace; of a running one nothing is.
std::vector<SThreadState> ReadThreads(const ucontext_t& context);

} // namespace NSDebugPackage

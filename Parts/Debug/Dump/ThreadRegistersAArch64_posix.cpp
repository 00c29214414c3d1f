#include "Debug/Dump/ThreadRegisters_posix.h"

#include <elf.h>
#include <sys/user.h>

#include <cstring>

namespace NSDebugPackage {

namespace {

void Store(const user_regs_struct& source, elf_gregset_t& registers) {
    static_assert(sizeof registers == sizeof source);
    std::memcpy(&registers, &source, sizeof source);
}

} // namespace

const uint16_t kElfMachine = EM_AARCH64;

void CopyRegisters(const ucontext_t& context, elf_gregset_t& registers) {
    const mcontext_t& machine = context.uc_mcontext;
    user_regs_struct result{};
    static_assert(sizeof result.regs == sizeof machine.regs);
    std::memcpy(result.regs, machine.regs, sizeof result.regs);
    result.sp = machine.sp;
    result.pc = machine.pc;
    result.pstate = machine.pstate;
    Store(result, registers);
}

uint64_t GetStackPointer(const ucontext_t& context) {
    return context.uc_mcontext.sp;
}

void SetRegisters(uint64_t programCounter, uint64_t stackPointer, elf_gregset_t& registers) {
    user_regs_struct result{};
    result.sp = stackPointer;
    result.pc = programCounter;
    Store(result, registers);
}

} // namespace NSDebugPackage

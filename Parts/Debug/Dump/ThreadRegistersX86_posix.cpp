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

user_regs_struct FromContext(const ucontext_t& context) {
    const auto get = [&context](int index) {
        return static_cast<unsigned long long>(context.uc_mcontext.gregs[index]);
    };
    user_regs_struct result{};
    result.r8 = get(REG_R8);
    result.r9 = get(REG_R9);
    result.r10 = get(REG_R10);
    result.r11 = get(REG_R11);
    result.r12 = get(REG_R12);
    result.r13 = get(REG_R13);
    result.r14 = get(REG_R14);
    result.r15 = get(REG_R15);
    result.rax = get(REG_RAX);
    result.rbx = get(REG_RBX);
    result.rcx = get(REG_RCX);
    result.rdx = get(REG_RDX);
    result.rsi = get(REG_RSI);
    result.rdi = get(REG_RDI);
    result.rbp = get(REG_RBP);
    result.rsp = get(REG_RSP);
    result.rip = get(REG_RIP);
    result.eflags = get(REG_EFL);
    // A context from getcontext holds no segments, and debuggers tell 32-bit code by this one.
    result.cs = 0x33;
    result.ss = 0x2B;
    return result;
}

user_regs_struct FromCounters(uint64_t programCounter, uint64_t stackPointer) {
    user_regs_struct result{};
    result.rip = programCounter;
    result.rsp = stackPointer;
    result.cs = 0x33;
    result.ss = 0x2B;
    return result;
}

} // namespace

const uint16_t kElfMachine = EM_X86_64;

void CopyRegisters(const ucontext_t& context, elf_gregset_t& registers) {
    Store(FromContext(context), registers);
}

uint64_t GetStackPointer(const ucontext_t& context) {
    return FromContext(context).rsp;
}

void SetRegisters(uint64_t programCounter, uint64_t stackPointer, elf_gregset_t& registers) {
    Store(FromCounters(programCounter, stackPointer), registers);
}

} // namespace NSDebugPackage

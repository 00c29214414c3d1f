// The one place that knows the registers of the processor; each that has dumps has a home of its
// own.
#pragma once

#include <sys/procfs.h>
#include <sys/ucontext.h>

#include <cstdint>

namespace NSDebugPackage {

/// The machine number of an ELF file for this processor.
extern const uint16_t kElfMachine;

void CopyRegisters(const ucontext_t& context, elf_gregset_t& registers);
uint64_t GetStackPointer(const ucontext_t& context);
void SetRegisters(uint64_t programCounter, uint64_t stackPointer, elf_gregset_t& registers);

} // namespace NSDebugPackage

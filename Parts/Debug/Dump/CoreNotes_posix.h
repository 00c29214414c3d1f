#pragma once

#include "Debug/Dump/ProcessMemory_posix.h"
#include "Debug/Dump/ProcessThreads_posix.h"

#include <string>
#include <vector>

namespace NSDebugPackage {

/// The notes of an ELF core: threads, process, auxiliary vector and mapped files. `signal` is what
/// the first thread got, 0 for none.
std::string MakeCoreNotes(const std::vector<SThreadState>& threads,
                          const std::vector<SMapping>& mappings, int signal);

} // namespace NSDebugPackage

// Dumps of the process for a debugger.
#pragma once

#include "Support/Time/CalendarTime.h"

#include <string>

namespace NSDebugPackage {

/// Dumps the process into the folder, which ends in "\", under the first free name for the base and
/// the time. Answers the path, empty when nothing was written: names 1 to 19 taken, or a failure.
/// `fault` is null, or what the system hands to a handler of faults of the calling thread.
std::string WriteMiniDumpFile(const std::string& folder, const std::string& base, void* fault);
std::string WriteMiniDumpFile(const std::string& folder, const std::string& base, void* fault,
                              const NSSupport::SCalendarTime& localTime);

/// The platform's part.
enum class EDumpResult { kWritten, kNameTaken, kFailed };

/// Makes a new file of that name, which is gone again when the dump fails. On Windows it is a
/// minidump, elsewhere an ELF core; both hold the stacks of the threads and what a debugger needs
/// to find the modules' own files. Processors and systems that no code here knows have no dumps:
/// every call fails there and makes no file. Beside a core stands "<name>.txt" with the calling
/// thread's stack trace and the memory map, to be read without a debugger. Not a snapshot: other
/// threads of a POSIX process run on meanwhile.
EDumpResult WriteProcessDump(const std::u16string& path, void* fault);

} // namespace NSDebugPackage

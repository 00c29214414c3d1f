#pragma once

#include <string>

namespace NSDebugPackage {

/// Makes a new text file for readers without a debugger: the stack trace of the calling thread and
/// the memory map of the process. An existing file of that name is left alone. False when nothing
/// was written.
bool WriteDumpReport(const std::string& path);

} // namespace NSDebugPackage

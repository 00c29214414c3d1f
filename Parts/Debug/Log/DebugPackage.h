// The registry of debuggers and the life of the package. Nothing in the library starts it; until a
// host does, all functions here do nothing and answer empty texts.
#pragma once

#include <string>

namespace NSDebugPackage {

/// By one thread, while no other uses the package; so is the end. Raises std::bad_alloc when there
/// are no thread-local slots. A second start does nothing.
void InitDebugPackage();
/// Destroys all debuggers, each of which writes and flushes what it holds, and ends the package.
void CloseAllDebuggers();

/// A debugger with a log file in GetDebugLogFolder(logFolderName), or without one where there is no
/// such folder. An existing name does nothing.
void OpenDebugger(const std::string& name, const std::string& title,
                  const std::string& logFolderName);

/// By the debugger's name; nothing happens, and the texts are empty, where there is none. These
/// wait for the registry.
void TraceToDebugger(const std::string& name, const char* text);
std::string GetDebuggerLogFileName(const std::string& name);
std::string GetDebuggerLogFolder(const std::string& name);

void FlushAllDebuggers();

} // namespace NSDebugPackage

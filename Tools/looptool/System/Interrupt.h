#pragma once

namespace NSLoopTool {

/// From here on Ctrl-C, a wish to end or the end of the terminal does not end the process but is
/// noted, so that work in progress can stop cleanly and leave no half-written file. A read or write
/// that waits then fails.
void CatchInterrupts();

/// What notes it: the handler that the platform's CatchInterrupts installs.
extern "C" void NoteInterrupt(int signal);

bool WasInterrupted();

/// Raises CToolFailure with kExitCode_Interrupted once Ctrl-C was pressed.
void StopIfInterrupted();

} // namespace NSLoopTool

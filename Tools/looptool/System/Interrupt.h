#pragma once

namespace NSLoopTool {

/// From here on Ctrl-C, or a wish to end, does not end the process but is noted, so that work in
/// progress can stop cleanly and leave no half-written file.
void CatchInterrupts();

bool WasInterrupted();

/// Raises CToolFailure with kExitCode_Interrupted once Ctrl-C was pressed.
void StopIfInterrupted();

} // namespace NSLoopTool

#include "looptool/System/Interrupt.h"

#include "looptool/System/ToolFailure.h"

#include <csignal>

namespace NSLoopTool {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;

} // namespace

extern "C" void NoteInterrupt(int /*signal*/) {
    gInterrupted = 1;
}

bool WasInterrupted() {
    return gInterrupted != 0;
}

void StopIfInterrupted() {
    if (WasInterrupted()) {
        throw CToolFailure("interrupted", kExitCode_Interrupted);
    }
}

} // namespace NSLoopTool

#include "looptool/System/Interrupt.h"

#include "looptool/System/ToolFailure.h"

#include <csignal>

namespace NSLoopTool {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;

} // namespace

extern "C" {
static void NoteInterrupt(int /*signal*/) {
    gInterrupted = 1;
}
}

void CatchInterrupts() {
    std::signal(SIGINT, NoteInterrupt);
    std::signal(SIGTERM, NoteInterrupt);
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

#include "looptool/System/Interrupt.h"

#include <csignal>

namespace NSLoopTool {

void CatchInterrupts() {
    std::signal(SIGINT, NoteInterrupt);
    std::signal(SIGTERM, NoteInterrupt);
}

} // namespace NSLoopTool

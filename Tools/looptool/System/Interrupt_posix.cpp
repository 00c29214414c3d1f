#include "looptool/System/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace NSLoopTool {

void CatchInterrupts() {
    // Calls that wait, for a pipe or for a person to type, are not started again: they fail, and
    // whoever made them asks WasInterrupted().
    struct sigaction action {};
    action.sa_handler = NoteInterrupt;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) { // as nohup leaves it
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace NSLoopTool

#include "looptool/Terminal.h"

#include <unistd.h>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

void MakeTerminalUtf8() {}

void MakeStandardOutputBinary() {}

} // namespace NSLoopTool

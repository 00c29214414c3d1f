#include "looptool/Terminal.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

void MakeTerminalUtf8() {
    SetConsoleOutputCP(CP_UTF8);
}

void MakeStandardOutputBinary() {
    _setmode(_fileno(stdout), _O_BINARY);
}

} // namespace NSLoopTool

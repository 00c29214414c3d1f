#include "looptool/System/Terminal.h"

#include <conio.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

int TerminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO information{};
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    constexpr int kUsual = 80;
    return GetConsoleScreenBufferInfo(handle, &information) != 0
               ? information.srWindow.Right - information.srWindow.Left + 1
               : kUsual;
}

void MakeTerminalUtf8() {
    SetConsoleOutputCP(CP_UTF8);
}

void MakeStreamBinary(std::FILE* stream) {
    _setmode(_fileno(stream), _O_BINARY);
}

void IgnoreClosedPipes() {}

CKeyboard::CKeyboard() = default;

CKeyboard::~CKeyboard() = default;

char CKeyboard::WaitForKey(int milliseconds) {
    if (_kbhit() != 0) {
        return static_cast<char>(_getch());
    }
    Sleep(static_cast<DWORD>(milliseconds));
    return 0;
}

} // namespace NSLoopTool

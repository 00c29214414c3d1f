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

void HaveWritesFail() {}

CKeyboard::CKeyboard() = default;

CKeyboard::~CKeyboard() = default;

char CKeyboard::WaitForKey(int milliseconds) {
    if (_kbhit() != 0) {
        const int key = _getch();
        if (key != 0 && key != 0xE0) {
            return static_cast<char>(key);
        }
        const int code = _getch(); // of a key without a letter
        return code == 72 ? kKey_Up : (code == 80 ? kKey_Down : '\0');
    }
    Sleep(static_cast<DWORD>(milliseconds));
    return 0;
}

} // namespace NSLoopTool

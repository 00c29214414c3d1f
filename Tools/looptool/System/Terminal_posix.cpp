#include "looptool/System/Terminal.h"

#include <csignal>
#include <memory>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

int TerminalWidth(std::FILE* stream) {
    winsize size{};
    constexpr int kUsual = 80;
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

void MakeTerminalUtf8() {}

void MakeStreamBinary(std::FILE* /*stream*/) {}

void HaveWritesFail() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

CKeyboard::CKeyboard() {
    auto saved = std::make_unique<termios>();
    if (!IsTerminal(stdin) || tcgetattr(STDIN_FILENO, saved.get()) != 0) {
        return;
    }
    termios raw = *saved;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSANOW, &raw);
    fSaved = saved.release();
}

CKeyboard::~CKeyboard() {
    const std::unique_ptr<termios> saved(static_cast<termios*>(fSaved));
    if (saved != nullptr) {
        tcsetattr(STDIN_FILENO, TCSANOW, saved.get());
    }
}

char CKeyboard::WaitForKey(int milliseconds) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (fSaved == nullptr) {
        poll(nullptr, 0, milliseconds);
        return 0;
    }
    const auto next = [&input](int wait) {
        char key = 0;
        const bool isReady = poll(&input, 1, wait) > 0 && (input.revents & POLLIN) != 0;
        return isReady && read(STDIN_FILENO, &key, 1) == 1 ? key : '\0';
    };
    const char key = next(milliseconds);
    if (key != '\x1b') {
        return key;
    }
    // Arrows send ESC [ A or ESC O A, all at once.
    const char kind = next(0);
    const char arrow = kind == '[' || kind == 'O' ? next(0) : '\0';
    return arrow == 'A' ? kKey_Up : (arrow == 'B' ? kKey_Down : '\0');
}

} // namespace NSLoopTool

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

void IgnoreClosedPipes() {
    std::signal(SIGPIPE, SIG_IGN);
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
    char key = 0;
    const bool isReady =
        fSaved != nullptr && poll(&input, 1, milliseconds) > 0 && (input.revents & POLLIN) != 0;
    if (isReady) {
        return read(STDIN_FILENO, &key, 1) == 1 ? key : '\0';
    }
    if (fSaved == nullptr) {
        poll(nullptr, 0, milliseconds);
    }
    return 0;
}

} // namespace NSLoopTool

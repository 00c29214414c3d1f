#pragma once

#include <cstdio>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream);

/// Columns of the terminal that the stream is, 80 if they are not known.
int TerminalWidth(std::FILE* stream);

/// Has the terminal read what is written to it as UTF-8.
void MakeTerminalUtf8();

/// Keeps the platform from altering line ends and the byte 26 in what passes through standard input
/// and output.
void MakeStreamBinary(std::FILE* stream);

/// Has writing to a closed pipe, or beyond the size that a file may have, fail instead of ending
/// the program.
void HaveWritesFail();

/// The arrow keys, as line editors know them from Ctrl-P and Ctrl-N.
constexpr char kKey_Up = 0x10;
constexpr char kKey_Down = 0x0E;

/// While it lives, keys reach standard input at once and are not shown; nothing happens where that
/// is not a terminal.
class CKeyboard {
public:
    CKeyboard();
    ~CKeyboard();
    CKeyboard(const CKeyboard&) = delete;
    CKeyboard& operator=(const CKeyboard&) = delete;

    /// The next key, waiting at most that long; 0 for none.
    char WaitForKey(int milliseconds);

private:
    void* fSaved = nullptr;
};

} // namespace NSLoopTool

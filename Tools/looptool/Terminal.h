#pragma once

#include <cstdio>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream);

/// Has the terminal read what is written to it as UTF-8.
void MakeTerminalUtf8();

/// Keeps the platform from altering line ends in what is written to standard output.
void MakeStandardOutputBinary();

} // namespace NSLoopTool

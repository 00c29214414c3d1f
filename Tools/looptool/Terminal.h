#pragma once

#include <cstdio>

namespace NSLoopTool {

bool IsTerminal(std::FILE* stream);

// Keeps the platform from altering line ends in what is written to standard output.
void MakeStandardOutputBinary();

} // namespace NSLoopTool

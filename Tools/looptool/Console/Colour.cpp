#include "looptool/Console/Colour.h"

#include "looptool/System/Terminal.h"

#include <cstdio>
#include <cstdlib>

namespace NSLoopTool {

std::string Coloured(const std::string& text, EColour colour) {
    const char* const refused = std::getenv("NO_COLOR");
    if (!IsTerminal(stdout) || (refused != nullptr && refused[0] != '\0')) {
        return text;
    }
    return (colour == EColour::kGood ? "\x1b[32m" : "\x1b[31m") + text + "\x1b[0m";
}

} // namespace NSLoopTool

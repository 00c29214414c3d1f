#include "looptool/System/Arguments.h"

namespace NSLoopTool {

std::vector<std::string> Arguments(int argc, const char* const* argv) {
    return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

} // namespace NSLoopTool

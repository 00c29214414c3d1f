#include "looptool/System/Arguments.h"

#include <filesystem>
#include <memory>
#include <windows.h>
// Behind windows.h, which it needs.
#include <shellapi.h>

namespace NSLoopTool {

// The program's own narrow arguments have lost every character that the code page lacks.
std::vector<std::string> Arguments(int /*argc*/, const char* const* /*argv*/) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i) {
        const std::u8string text = std::filesystem::path(words.get()[i]).u8string();
        arguments.emplace_back(text.begin(), text.end());
    }
    return arguments;
}

} // namespace NSLoopTool

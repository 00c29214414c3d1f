#pragma once

#include <string>
#include <string_view>

namespace NSLoopTool {

/// A creator text with "\n" between its lines, where the library has U+2029.
inline std::string CreatorLines(std::string_view text) {
    constexpr std::string_view kSeparator = "\xE2\x80\xA9";
    std::string lines;
    for (;;) {
        const size_t at = text.find(kSeparator);
        lines.append(text.substr(0, at));
        if (at == std::string_view::npos) {
            return lines;
        }
        lines.push_back('\n');
        text.remove_prefix(at + kSeparator.size());
    }
}

} // namespace NSLoopTool

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace LoopWriterTests {

using Bytes = std::vector<uint8_t>;

// Two hex digits are a byte, what stands between single quotes stands for itself, blanks for
// nothing.
inline Bytes Layout(const std::string& text) {
    Bytes bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\'') {
            for (++i; text[i] != '\''; ++i) {
                bytes.push_back(static_cast<uint8_t>(text[i]));
            }
        } else if (text[i] != ' ') {
            bytes.push_back(static_cast<uint8_t>(std::stoul(text.substr(i++, 2), nullptr, 16)));
        }
    }
    return bytes;
}

} // namespace LoopWriterTests

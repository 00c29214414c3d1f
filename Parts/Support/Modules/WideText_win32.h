#pragma once

#include <string>

namespace NSSupport {

/// The text as the system's calls take it: units of 16 bits either way.
inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

} // namespace NSSupport

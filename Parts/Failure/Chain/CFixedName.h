#pragma once

#include <cstddef>
#include <string_view>

namespace NSLichen {

/// A short text stored by value and never allocated, so that naming a failure cannot fail. Text
/// beyond the limit is cut off.
template <std::size_t kLimit>
class TFixedText {
public:
    constexpr TFixedText() = default;
    constexpr explicit TFixedText(std::string_view text) {
        for (std::size_t i = 0; i < kLimit && i < text.size() && text[i] != '\0'; ++i) {
            fCharacters[i] = text[i];
        }
    }

    constexpr const char* GetText() const { return fCharacters; }
    constexpr std::string_view GetView() const { return std::string_view(fCharacters); }
    constexpr bool IsEmpty() const { return fCharacters[0] == '\0'; }

    friend constexpr bool operator==(const TFixedText& a, const TFixedText& b) {
        return a.GetView() == b.GetView();
    }

private:
    /// Always ends in a terminator; zero behind it.
    char fCharacters[kLimit + 1] = {};
};

/// A key of a part or a word for a type of object: at most 64 characters.
using CFixedName = TFixedText<64>;
static_assert(sizeof(CFixedName) == 65);

} // namespace NSLichen

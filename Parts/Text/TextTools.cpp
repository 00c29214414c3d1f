#include "Text/TextTools.h"

#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace NSTextPackage {

void CopyToBuffer(char16_t* destination, const std::u16string& source, size_t limit) {
    const size_t count = std::min(limit, source.size());
    std::copy_n(source.begin(), count, destination);
    destination[count] = u'\0';
}

std::u16string LeftOf(const std::u16string& text, size_t count) {
    return text.substr(0, count);
}

std::u16string ReplaceAnyOf(const std::u16string& text, const std::string& characters,
                            char16_t replacement) {
    const std::u16string set = Utf8ToUtf16Default(characters);
    std::u16string result = text;
    std::replace_if(
        result.begin(), result.end(),
        [&set](char16_t unit) { return set.find(unit) != std::u16string::npos; }, replacement);
    return result;
}

std::u16string TrimStart(const std::u16string& text, const std::string& characters) {
    const size_t first = text.find_first_not_of(Utf8ToUtf16Default(characters));
    return first == std::u16string::npos ? std::u16string() : text.substr(first);
}

std::u16string TrimEnd(const std::u16string& text, const std::string& characters) {
    const size_t last = text.find_last_not_of(Utf8ToUtf16Default(characters));
    return last == std::u16string::npos ? std::u16string() : text.substr(0, last + 1);
}

std::string FormatFixed(double value, int decimals) {
    constexpr size_t kLongestText = 511;
    // No double has more than 1074 decimals, so further ones are zeros that the limit cuts off.
    constexpr int kMostDecimals = 1074;
    std::array<char, kMostDecimals + 320> buffer{};
    const int count = decimals < 0 ? 6 : std::min(decimals, kMostDecimals);
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed, count);
    const auto length = static_cast<size_t>(end - buffer.data());
    return {buffer.data(), std::min(length, kLongestText)};
}

} // namespace NSTextPackage

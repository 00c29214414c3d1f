#include "Failure/Chain/CFailureValue.h"

#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace NSLichen {

namespace {

std::u16string Widen(std::string_view text) {
    std::u16string wide;
    wide.reserve(text.size());
    for (const char character : text) {
        wide.push_back(static_cast<unsigned char>(character));
    }
    return wide;
}

// Through to_chars, since printf's decimal point would follow the locale of the host.
std::u16string FormatFloat(float value) {
    // The largest float has 39 digits ahead of the point.
    char digits[64];
    const std::to_chars_result result = std::to_chars(
        digits, digits + sizeof digits, static_cast<double>(value), std::chars_format::fixed, 6);
    return Widen(std::string_view(digits, static_cast<std::size_t>(result.ptr - digits)));
}

} // namespace

CFailureValue::CFailureValue(TContent content) : fContent(std::move(content)) {}

CFailureValue CFailureValue::FromText(const std::string& text) {
    return CFailureValue(TContent(std::string(text.c_str())));
}

CFailureValue CFailureValue::FromWideText(const std::u16string& text) {
    return CFailureValue(TContent(std::u16string(text.c_str())));
}

EValueKind CFailureValue::GetKind() const {
    return static_cast<EValueKind>(kValueKind_Nil + static_cast<int32_t>(fContent.index()));
}

std::u16string ToWideText(const CFailureValue& value) {
    switch (value.GetKind()) {
    case kValueKind_Nil:
        return u"<nil>";
    case kValueKind_Integer:
        return Widen(std::to_string(value.GetInteger()));
    case kValueKind_Float:
        return FormatFloat(value.GetFloat());
    case kValueKind_Text:
        return Widen(value.GetText());
    case kValueKind_WideText:
        return value.GetWideText();
    case kValueKind_Word:
        return Widen(value.GetWord().GetView());
    }
    return std::u16string();
}

} // namespace NSLichen

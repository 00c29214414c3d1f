#pragma once

#include "Failure/Chain/CFixedName.h"

#include <cstdint>
#include <string>
#include <variant>

namespace NSLichen {

enum EValueKind : int32_t {
    kValueKind_Nil = 20,
    kValueKind_Integer = 21,
    kValueKind_Float = 22,
    kValueKind_Text = 23,
    kValueKind_WideText = 24,
    kValueKind_Word = 25
};

/// A value of one of six kinds; it owns its text. Texts end at their first terminator. Two values
/// are equal when their kinds and their contents are, so a value that holds a NaN equals none.
class CFailureValue {
public:
    CFailureValue() = default;
    static CFailureValue FromInteger(int64_t value) { return CFailureValue(TContent(value)); }
    static CFailureValue FromFloat(float value) { return CFailureValue(TContent(value)); }
    static CFailureValue FromText(const std::string& text);
    static CFailureValue FromWideText(const std::u16string& text);
    static CFailureValue FromWord(const CFixedName& word) { return CFailureValue(TContent(word)); }

    EValueKind GetKind() const;
    /// Each only for a value of its kind.
    int64_t GetInteger() const { return std::get<int64_t>(fContent); }
    float GetFloat() const { return std::get<float>(fContent); }
    const std::string& GetText() const { return std::get<std::string>(fContent); }
    const std::u16string& GetWideText() const { return std::get<std::u16string>(fContent); }
    const CFixedName& GetWord() const { return std::get<CFixedName>(fContent); }

    friend bool operator==(const CFailureValue&, const CFailureValue&) = default;

private:
    /// In the order of the kinds.
    using TContent =
        std::variant<std::monostate, int64_t, float, std::string, std::u16string, CFixedName>;

    explicit CFailureValue(TContent content);

    TContent fContent;
};

/// "<nil>" for nil, a decimal integer, a float with six decimals, or the text; bytes of an 8-bit
/// text or a word become units of their own value.
std::u16string ToWideText(const CFailureValue& value);

} // namespace NSLichen

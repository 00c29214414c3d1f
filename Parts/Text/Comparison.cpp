#include "Text/Comparison.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "Text/PlatformText.h"

#include <stdexcept>
#include <string_view>

namespace NSTextPackage {

namespace {

std::u16string_view WithoutMark(const std::u16string& text) {
    std::u16string_view view = text;
    if (!view.empty() && view.front() == u'\uFEFF') {
        view.remove_prefix(1);
    }
    return view;
}

} // namespace

EComparison CompareText(const std::u16string& a, const std::u16string& b, bool ignoreCase,
                        bool ignoreMarks) {
    switch (PlatformCompareText(WithoutMark(a), WithoutMark(b), ignoreCase, ignoreMarks)) {
    case 1:
        return EComparison::kLess;
    case 2:
        return EComparison::kEqual;
    case 3:
        return EComparison::kGreater;
    case 0:
        NSLichen::RaiseWithTarget(NSLichen::XFormatViolation(""), NSLichen::UnicodeWord());
    default:
        NSLichen::Raise(std::logic_error(""));
    }
}

bool TextEquals(const std::u16string& a, const std::u16string& b) {
    return CompareText(a, b, false, false) == EComparison::kEqual;
}

bool TextEqualsIgnoreCase(const std::u16string& a, const std::u16string& b) {
    return CompareText(a, b, true, false) == EComparison::kEqual;
}

std::u16string ToLowerUtf16(const std::u16string& text) {
    std::u16string result = text;
    PlatformLowerUtf16(result);
    return result;
}

} // namespace NSTextPackage

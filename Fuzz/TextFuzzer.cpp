#include "Fuzz/CByteSource.h"
#include "Fuzz/Promise.h"

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/Core/Bytes/CountedStrings.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "Text/CodePage.h"
#include "Text/CodeUnits.h"
#include "Text/Comparison.h"
#include "Text/TextTools.h"
#include "Text/UnicodeConversion.h"

#include <string>

namespace {

using namespace NSTextPackage;

template <class Body>
void Forgive(Body body) {
    try {
        body();
    } catch (const NSLichen::XFormatViolation&) {
    } catch (const NSLichen::XUnsupportedFormat&) {
    } catch (const NSLichen::XRead&) {
    }
}

std::u16string ToUnits(const std::string& bytes) {
    std::u16string units;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        units.push_back(static_cast<char16_t>(static_cast<uint8_t>(bytes[i]) << 8 |
                                              static_cast<uint8_t>(bytes[i + 1])));
    }
    return units;
}

bool IsWellFormed(const std::u16string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (IsPairAt(text, i)) {
            ++i;
        } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
            return false;
        }
    }
    return true;
}

void CheckUnits(const std::u16string& units) {
    Forgive([&] {
        const std::string utf8 = Utf16ToUtf8(units);
        PROMISE(!IsWellFormed(units) || Utf8ToUtf16Default(utf8) == units);
    });
    const std::string narrowed = Utf16ToCp1252(units, '?');
    PROMISE(narrowed.size() <= units.size());
    PROMISE(CompareText(units, units, false, false) == EComparison::kEqual);
    PROMISE(ToLowerUtf16(ToLowerUtf16(units)) == ToLowerUtf16(units));
    char16_t buffer[16];
    CopyToBuffer(buffer, units, 15);
}

void CheckOrder(const std::u16string& a, const std::u16string& b) {
    for (const bool ignoreCase : {false, true}) {
        const EComparison forward = CompareText(a, b, ignoreCase, false);
        const EComparison backward = CompareText(b, a, ignoreCase, false);
        PROMISE((forward == EComparison::kEqual) == (backward == EComparison::kEqual));
        PROMISE(forward == EComparison::kEqual || forward != backward);
    }
}

} // namespace

// The text conversions on any bytes, and counted strings as files hold them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    Forgive([&] { CheckUnits(Utf8ToUtf16Default(text)); });
    Forgive([&] { AsciiToUtf16(text, false); });
    PROMISE(Utf16ToCp1252(Cp1252ToUtf16(text), '?') == text);
    const std::u16string units = ToUnits(text);
    CheckUnits(units);
    CheckOrder(units.substr(0, units.size() / 2), units.substr(units.size() / 2));

    NSPorter::CMemoryMedia media(static_cast<int64_t>(size), bytes);
    if (size >= 4) {
        Forgive([&] { NSPorter::ReadCountedString(media); });
    }
    return 0;
}

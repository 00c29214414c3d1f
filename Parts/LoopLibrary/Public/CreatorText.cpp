#include "LoopLibrary/Public/CreatorText.h"

#include "Text/CodeUnits.h"
#include "Text/UnicodeConversion.h"

#include <cstring>

namespace NSLOPDLL {

std::string CutUtf8(const std::string& text, size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    size_t end = limit;
    while (end > 0 && NSTextPackage::IsContinuationByte(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

void CopyCreatorText(const std::u16string& text, char (&field)[256]) {
    const std::string bytes = CutUtf8(NSTextPackage::Utf16ToUtf8(text), sizeof field - 1);
    std::memcpy(field, bytes.c_str(), bytes.size() + 1);
}

} // namespace NSLOPDLL

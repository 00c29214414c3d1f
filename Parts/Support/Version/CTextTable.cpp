#include "Support/Version/CTextTable.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace NSSupport {

namespace {

[[noreturn]] void RefuseLine(const std::string& line) {
    NSLichen::Raise(NSLichen::XFormatViolation("bad text table line: " + line));
}

std::string_view WithoutBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

std::string Unescape(std::string_view text, const std::string& line) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        ++i;
        if (i == text.size() || (text[i] != 'n' && text[i] != '\\')) {
            RefuseLine(line);
        }
        result += text[i] == 'n' ? '\n' : '\\';
    }
    return result;
}

} // namespace

CTextTable::CTextTable(NSPorter::CMedia& media) {
    std::string text(static_cast<size_t>(media.GetLength()), '\0');
    media.ReadAt(0, media.GetLength(), reinterpret_cast<uint8_t*>(text.data()));
    size_t position = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while (position < text.size()) {
        const size_t end = std::min(text.find('\n', position), text.size());
        AddLine(text.substr(position, end - position));
        position = end + 1;
    }
}

void CTextTable::AddLine(const std::string& line) {
    const std::string_view content = WithoutBlanks(line);
    if (content.empty() || content.front() == '#') {
        return;
    }
    const size_t equals = content.find('=');
    if (equals == std::string_view::npos) {
        RefuseLine(line);
    }
    fTexts.emplace(WithoutBlanks(content.substr(0, equals)),
                   Unescape(WithoutBlanks(content.substr(equals + 1)), line));
}

std::optional<std::string> CTextTable::GetText(const std::string& key) const {
    const auto found = fTexts.find(key);
    return found == fTexts.end() ? std::nullopt : std::make_optional(found->second);
}

} // namespace NSSupport

#pragma once

#include "PorterPackage/Core/Media/CMedia.h"

#include <map>
#include <optional>
#include <string>

namespace NSSupport {

/// Texts by key, as a ".txt" resource holds them: UTF-8, one "key = text" to a line. In the text
/// "\n" stands for a line end and "\\" for a backslash. Empty lines and lines that begin with "#"
/// do not count; of a key that comes twice the first line counts.
class CTextTable {
public:
    CTextTable() = default;
    /// Reads the media from its start. Raises XFormatViolation for a line without "=" and for
    /// another character behind a backslash.
    explicit CTextTable(NSPorter::CMedia& media);

    std::optional<std::string> GetText(const std::string& key) const;
    size_t GetCount() const { return fTexts.size(); }

private:
    void AddLine(const std::string& line);

    std::map<std::string, std::string> fTexts;
};

} // namespace NSSupport

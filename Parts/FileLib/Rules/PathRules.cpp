#include "FileLib/Rules/PathRules.h"

#include <algorithm>

namespace NSFileLibInternals {

namespace {

// The tables that names are compared with are ASCII, so no other letter has a case here; in
// particular the host's language does not matter.
constexpr char16_t LowerAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

bool EqualsIgnoringAsciiCase(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t x, char16_t y) { return LowerAscii(x) == LowerAscii(y); });
}

bool AreValidComponents(std::u16string_view rest) {
    while (!rest.empty()) {
        const size_t separator = rest.find(u'\\');
        if (!IsValidFileName(std::u16string(rest.substr(0, separator)))) {
            return false;
        }
        if (separator == std::u16string_view::npos) {
            return true;
        }
        rest.remove_prefix(separator + 1);
    }
    return true; // a folder path: nothing behind its last "\"
}

} // namespace

bool IsForbiddenCharacter(char16_t unit) noexcept {
    return std::find(kForbiddenCharacters.begin(), kForbiddenCharacters.end(), unit) !=
           kForbiddenCharacters.end();
}

bool IsNameWhiteSpace(char16_t unit) noexcept {
    return kNameWhiteSpace.find(unit) != std::u16string_view::npos;
}

bool IsReservedName(const std::u16string& name) {
    const std::u16string_view stem = std::u16string_view(name).substr(0, name.find(u'.'));
    return std::any_of(std::begin(kReservedNames), std::end(kReservedNames),
                       [&](const auto& row) { return EqualsIgnoringAsciiCase(stem, row); });
}

bool IsValidFileName(const std::u16string& name) {
    if (name.empty() || name.size() > kMaxNameLength) {
        return false;
    }
    return std::none_of(name.begin(), name.end(), IsForbiddenCharacter) && name.back() != u'.' &&
           !IsNameWhiteSpace(name.back()) && !IsReservedName(name);
}

bool IsExtensionInList(const std::u16string& extension, std::u16string_view list) {
    while (!extension.empty() && !list.empty()) {
        const size_t separator = list.find(kListSeparator);
        if (EqualsIgnoringAsciiCase(extension, list.substr(0, separator))) {
            return true;
        }
        list.remove_prefix(separator == std::u16string_view::npos ? list.size() : separator + 1);
    }
    return false;
}

bool IsSharePath(const std::u16string& path) noexcept {
    return path.size() >= 2 && path[0] == u'\\' && path[1] == u'\\';
}

size_t FindVolumeEnd(const std::u16string& path) noexcept {
    if (!IsSharePath(path)) {
        return std::min<size_t>(3, path.size());
    }
    const size_t serverEnd = path.find(u'\\', 3);
    const size_t shareEnd =
        serverEnd == std::u16string::npos ? serverEnd : path.find(u'\\', serverEnd + 1);
    return shareEnd == std::u16string::npos ? path.size() : shareEnd + 1;
}

bool WinIsValidVolumePath(const std::u16string& path) {
    if (path.empty()) {
        return false;
    }
    const std::u16string volume = path.back() == u'\\' ? path : path + u'\\';
    if (!IsSharePath(volume)) {
        const char16_t letter = LowerAscii(volume[0]);
        return volume.size() == 3 && letter >= u'a' && letter <= u'z' && volume[1] == u':';
    }
    const size_t serverEnd = volume.find(u'\\', 2);
    if (serverEnd == std::u16string::npos || serverEnd + 1 == volume.size()) {
        return false;
    }
    const size_t shareEnd = volume.find(u'\\', serverEnd + 1);
    return shareEnd + 1 == volume.size() && IsValidFileName(volume.substr(2, serverEnd - 2)) &&
           IsValidFileName(volume.substr(serverEnd + 1, shareEnd - serverEnd - 1));
}

bool IsPathWithin(const std::u16string& path, size_t least, size_t most) {
    if (path.size() < least || path.size() > most) {
        return false;
    }
    const size_t volumeEnd = FindVolumeEnd(path);
    return WinIsValidVolumePath(path.substr(0, volumeEnd)) &&
           AreValidComponents(std::u16string_view(path).substr(volumeEnd));
}

bool WinIsValidPath(const std::u16string& path) {
    return IsPathWithin(path, kMinPathLength, kMaxPathLength);
}

bool WinIsValidFilePath(const std::u16string& path) {
    return WinIsValidPath(path) && path.back() != u'\\';
}

} // namespace NSFileLibInternals

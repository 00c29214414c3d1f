#include "FileLib/Rules/NameMaking.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Rules/PathRules.h"
#include "Text/CodeUnits.h"

#include <algorithm>

namespace NSFileLibInternals {

namespace {

std::u16string TrimWhiteSpaceEnd(std::u16string text) {
    while (!text.empty() && IsNameWhiteSpace(text.back())) {
        text.pop_back();
    }
    return text;
}

} // namespace

void SplitFileName(const std::u16string& name, std::u16string& stem, std::u16string& extension) {
    const size_t dot = name.rfind(u'.');
    const bool hasExtension = dot != std::u16string::npos && name.size() - dot <= kMaxNameLength;
    const size_t stemLength = hasExtension ? dot : name.size();
    extension = name.substr(stemLength);
    stem = name.substr(0, stemLength);
}

void SplitPath(const std::u16string& path, std::u16string& folder, std::u16string& name) {
    const size_t separator = path.rfind(u'\\');
    const size_t folderLength = separator == std::u16string::npos ? 0 : separator + 1;
    name = path.substr(folderLength);
    folder = path.substr(0, folderLength);
}

std::u16string TruncateFileName(const std::u16string& name, size_t limit) {
    if (name.size() <= limit) {
        return name;
    }
    std::u16string stem;
    std::u16string extension;
    SplitFileName(name, stem, extension);
    size_t room = limit > extension.size() ? limit - extension.size() : 0;
    if (room < 1) {
        NSLichen::Raise(NSLichen::XOutOfSpace("not enough room for truncated file name"));
    }
    // Half a pair is not text; it stays only where the stem would be empty without it.
    if (room > 1 && room < stem.size() && NSTextPackage::IsHighSurrogate(stem[room - 1])) {
        --room;
    }
    return stem.substr(0, room) + extension;
}

std::u16string MakeValidFileName(const std::u16string& name, size_t limit) {
    const auto begin = std::find_if_not(name.begin(), name.end(), IsNameWhiteSpace);
    const auto end =
        std::find_if_not(name.rbegin(), std::make_reverse_iterator(begin), [](char16_t unit) {
            return unit == u'.' || IsNameWhiteSpace(unit);
        }).base();
    std::u16string result(begin, end);
    std::replace_if(result.begin(), result.end(), IsForbiddenCharacter, u'_');
    result = TruncateFileName(result, std::min(limit, kMaxNameLength));

    const size_t stemLength = std::min(result.find(u'.'), result.size());
    const std::u16string stem = TrimWhiteSpaceEnd(result.substr(0, stemLength));
    return IsReservedName(stem) ? stem + u'_' + result.substr(stemLength) : result;
}

std::u16string MakeValidFolderName(const std::u16string& name) {
    return MakeValidFileName(name, kMaxNameLength);
}

std::u16string MakeValidVolumeName(const std::u16string& name) {
    return MakeValidFileName(name, kMaxNameLength);
}

std::u16string WithTrailingSeparator(const std::u16string& path) {
    return !path.empty() && path.back() == u'\\' ? path : path + u'\\';
}

std::u16string WithoutTrailingSeparator(const std::u16string& path) {
    // "C:" would be another folder than "C:\".
    const bool isDriveRoot = path.size() == 3 && path[1] == u':';
    return path.empty() || path.back() != u'\\' || isDriveRoot ? path
                                                               : path.substr(0, path.size() - 1);
}

std::u16string JoinPath(const std::u16string& folder, const std::u16string& name) {
    return WithTrailingSeparator(folder) + name;
}

std::u16string GetParentPath(const std::u16string& path) {
    const size_t volumeEnd = FindVolumeEnd(path);
    const size_t end = path.size() - (path.ends_with(u'\\') ? 1U : 0U);
    if (end <= volumeEnd) {
        NSLichen::Raise(NSLichen::XNotFound("the root of a volume has no parent"));
    }
    return path.substr(0, std::max(volumeEnd, path.rfind(u'\\', end - 1) + 1));
}

std::u16string GetVolumeOfPath(const std::u16string& path) {
    return WithTrailingSeparator(path.substr(0, FindVolumeEnd(path)));
}

std::u16string GetNameOfPath(const std::u16string& path) {
    const std::u16string whole = path.ends_with(u'\\') ? path.substr(0, path.size() - 1) : path;
    return whole.substr(whole.rfind(u'\\') + 1);
}

bool WinIsAliasName(const std::u16string& name) {
    std::u16string stem;
    std::u16string extension;
    SplitFileName(name, stem, extension);
    return IsExtensionInList(extension, kAliasExtensions);
}

std::u16string StripLongPathPrefix(const std::u16string& path) {
    if (path.starts_with(u"\\\\?\\UNC\\")) {
        return u"\\\\" + path.substr(8);
    }
    return path.starts_with(u"\\\\?\\") ? path.substr(4) : path;
}

} // namespace NSFileLibInternals

#include "FileLib/Implementation/NativePaths.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Rules/PathRules.h"

namespace NSFileLibInternals {

bool IsNativePath(const std::u16string& path) {
    return IsPathWithin(path, kMinPathLength, GetPlatformFileOps().GetLongestPath());
}

bool IsNativeFilePath(const std::u16string& path) {
    return IsNativePath(path) && path.back() != u'\\';
}

const std::u16string& RequirePath(const std::u16string& path) {
    if (!IsNativePath(path)) {
        NSLichen::Raise(NSLichen::XNotFound("WinIsValidPath failed"));
    }
    return path;
}

const std::u16string& RequireFilePath(const std::u16string& path) {
    if (!IsNativeFilePath(path)) {
        NSLichen::Raise(NSLichen::XNotFound("WinIsValidFilePath failed"));
    }
    return path;
}

} // namespace NSFileLibInternals

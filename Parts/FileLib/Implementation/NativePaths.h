// The path rule with the limits of the platform in use, as all operations on the file system ask
// for it.
#pragma once

#include <string>

namespace NSFileLibInternals {

bool IsNativePath(const std::u16string& path);
/// A native path that does not end in "\".
bool IsNativeFilePath(const std::u16string& path);

/// Answer the path itself. XNotFound.
const std::u16string& RequirePath(const std::u16string& path);
const std::u16string& RequireFilePath(const std::u16string& path);

} // namespace NSFileLibInternals

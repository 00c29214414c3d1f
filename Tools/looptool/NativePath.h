#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace NSLoopTool {

// Paths as arguments have them: UTF-8 on Windows, bytes elsewhere.

std::filesystem::path PathOfArgument(const std::string& argument);
std::string ArgumentOfPath(const std::filesystem::path& path);

/// As the file library speaks of it.
std::u16string NativeOfAbsolutePath(const std::filesystem::path& path);

/// A path of the command line, relative or not, as the file library speaks of it. CToolFailure when
/// there is no current folder.
std::u16string NativePathOfArgument(const std::string& argument);

/// Null, with errno set, when the file cannot be made. One that exists is emptied.
std::FILE* OpenForWriting(const std::string& argument);

} // namespace NSLoopTool

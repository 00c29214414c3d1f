#pragma once

#include <filesystem>
#include <string>

namespace NSLoopTool {

// Paths as arguments have them: UTF-8 on Windows, bytes elsewhere.

std::filesystem::path PathOfArgument(const std::string& argument);
std::string ArgumentOfPath(const std::filesystem::path& path);

} // namespace NSLoopTool

// Files and folders under names that nothing bears yet.
#pragma once

#include <string>

namespace NSFileLibInternals {

/// Creates an empty file in the folder, with the extension of the wanted name; answers its path.
/// No file is left behind by a failure. XCreate.
std::u16string WinCreateUniqueFile(const std::u16string& folder, const std::u16string& wanted);

/// Creates a folder in the folder; answers its path, which ends in "\". XCreate.
std::u16string WinCreateUniqueDirectory(const std::u16string& folder);

} // namespace NSFileLibInternals

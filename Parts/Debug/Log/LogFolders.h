// Where logs lie, and how one gets to the user's desktop. Texts are UTF-8, paths with drive and
// "\".
#pragma once

#include <string>

namespace NSDebugPackage {

/// "<documents>\Halyard Logs\<name> Logs\", made when missing. Where it cannot be made the
/// documents folder itself; empty when there is none.
std::string GetDebugLogFolder(const std::string& name);

/// Copies a file of a folder, which ends in "\", into the folder `folderName` on the user's
/// desktop, which is made when missing.
bool CopyLogToFolder(const std::string& sourceFolder, const std::string& fileName,
                     const std::string& folderName);

} // namespace NSDebugPackage

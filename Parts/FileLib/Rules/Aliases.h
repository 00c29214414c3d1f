// Aliases: shell links on Windows, symbolic links under a name with ".lnk" elsewhere. What is an
// alias is told by the extension alone.
#pragma once

#include "FileLib/Rules/SSpecPath.h"

#include <string>

namespace NSFileLibInternals {

/// Writes an alias file that leads to the source file. XNotFound, XCreate.
void WinCreateAlias(const std::u16string& alias, const std::u16string& source);

/// Where an alias file leads; what it leads to exists. XNotFound, XResolve.
std::u16string WinFindShortcutTarget(const std::u16string& alias);

SSpecPath WinResolveAlias(const std::u16string& alias);

} // namespace NSFileLibInternals

#pragma once

#include <string>

namespace NSFileLibInternals {

/// The path that an alias file leads to, which exists. XNotFound; XResolve, target "reference", for
/// a file that is not an alias.
std::u16string WinFindShortcutTarget(const std::u16string& alias);

} // namespace NSFileLibInternals

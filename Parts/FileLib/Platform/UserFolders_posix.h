// The home folder of the user, and the folders that the user keeps in it.
#pragma once

#include <string>

namespace NSFileLibInternals {

/// A folder of the user's, without a "/" at its end, as ~/.config/user-dirs.dirs names it, for the
/// key "DOCUMENTS" or "DESKTOP". Where that file says nothing, the folder `fallback` of the home
/// folder if there is one. Empty when there is neither.
std::string FindUserFolder(const std::string& home, const std::string& key,
                           const std::string& fallback);

/// From the user database, since the environment is the host's. Empty when the database does not
/// name it.
std::string FindHomeFolder();

} // namespace NSFileLibInternals

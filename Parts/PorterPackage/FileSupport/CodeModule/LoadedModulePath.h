#pragma once

#include <string>

namespace NSPorter {

/// The absolute POSIX path of a module that the loader knows by `name`, when the working directory
/// was `workingDirectory` at that time; joined as text, and "." components are left out;
/// ".." stays, since a link may stand before it. An unknown or
/// unreachable working directory is reached through the process's own link to it. An empty name
/// gives an empty path.
std::string MakeLoadedModulePath(const std::string& name, const std::string& workingDirectory);

} // namespace NSPorter

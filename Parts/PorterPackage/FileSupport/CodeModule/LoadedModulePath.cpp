#include "PorterPackage/FileSupport/CodeModule/LoadedModulePath.h"

namespace NSPorter {

std::string MakeLoadedModulePath(const std::string& name, const std::string& workingDirectory) {
    if (name.empty() || name.front() == '/') {
        return name;
    }
    // The system marks a directory outside this process's root with "(unreachable)".
    const bool known = !workingDirectory.empty() && workingDirectory.front() == '/';
    return (known ? workingDirectory : std::string("/proc/self/cwd")) + "/" + name;
}

} // namespace NSPorter

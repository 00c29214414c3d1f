#include "PorterPackage/FileSupport/CodeModule/LoadedModulePath.h"

#include <algorithm>

namespace NSPorter {

namespace {

std::string WithoutDots(const std::string& path) {
    std::string result;
    for (size_t begin = 0; begin < path.size();) {
        const size_t end = std::min(path.find('/', begin + 1), path.size());
        const std::string component = path.substr(begin, end - begin);
        result += component == "/." ? "" : component;
        begin = end;
    }
    return result;
}

} // namespace

std::string MakeLoadedModulePath(const std::string& name, const std::string& workingDirectory) {
    if (name.empty() || name.front() == '/') {
        return WithoutDots(name);
    }
    // The system marks a directory outside this process's root with "(unreachable)".
    const bool known = !workingDirectory.empty() && workingDirectory.front() == '/';
    return WithoutDots((known ? workingDirectory : std::string("/proc/self/cwd")) + "/" + name);
}

} // namespace NSPorter

#include "PorterPackage/FileSupport/CodeModule/OwnModule.h"

#include "Failure/Raising/Raise.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PosixNameCodec.h"
#include "PorterPackage/FileSupport/CodeModule/LoadedModulePath.h"

#include <cstdlib>
#include <exception>
#include <memory>

#include <dlfcn.h>
#include <unistd.h>

namespace NSPorter {

namespace {

struct SFree {
    void operator()(char* text) const { std::free(text); }
};

std::string GetWorkingDirectory() {
    // The system's own buffer: no length limit applies.
    const std::unique_ptr<char, SFree> directory(getcwd(nullptr, 0));
    return directory != nullptr ? directory.get() : std::string();
}

// A program linked as a whole has no loader to ask: what is linked into it is where the program is.
// Empty when the system does not tell.
std::string GetProgramPath() {
    std::string path(256, '\0');
    for (;;) {
        const ssize_t size = readlink("/proc/self/exe", path.data(), path.size());
        if (size < 0) {
            return std::string();
        }
        const auto length = static_cast<size_t>(size);
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2); // it may have been cut off
    }
}

// Empty when neither loader nor system knows, or memory is short.
std::string NoteOwnPath() noexcept {
    try {
        Dl_info info = {};
        static const char sHere = 0;
        if (dladdr(&sHere, &info) == 0 || info.dli_fname == nullptr) {
            return GetProgramPath();
        }
        return MakeLoadedModulePath(info.dli_fname, GetWorkingDirectory());
    } catch (...) {
        return std::string();
    }
}

// Noted at load: the loader's name may be relative, and the process may change its directory later.
const std::string kOwnPath = NoteOwnPath();

} // namespace

SOwnModulePath FindOwnModulePath(void* /*systemHandle*/) {
    if (kOwnPath.empty()) {
        NSLichen::Raise(std::exception());
    }
    SOwnModulePath path;
    std::u16string name;
    path.fPath = NSFileLibInternals::NativeFromPosix(kOwnPath);
    NSFileLibInternals::SplitPath(path.fPath, path.fFolder, name);
    return path;
}

CLibrarySearchFolder::CLibrarySearchFolder(const std::u16string& /*folder*/) {}

CLibrarySearchFolder::~CLibrarySearchFolder() = default;

} // namespace NSPorter

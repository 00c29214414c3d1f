#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Rules/PosixNameCodec.h"
#include "Support/Loader/CDLLLoaderPosix.h"

#include <dlfcn.h>

namespace NSSupport {

namespace {

// The file part has a "." that is not its first character: "libc.so.6" is left alone.
bool HasExtension(const std::string& name) {
    const size_t slash = name.rfind('/');
    const size_t first = slash == std::string::npos ? 0 : slash + 1;
    return name.find('.', first + 1) != std::string::npos;
}

} // namespace

COpenDLLPosix::~COpenDLLPosix() {
    dlclose(fModule);
}

IOpenDLL::Address COpenDLLPosix::FindAddress(const std::string& name) const {
    return reinterpret_cast<Address>(dlsym(fModule, name.c_str()));
}

std::unique_ptr<IOpenDLL> CDLLLoaderPosix::Open(const std::u16string& name) {
    const bool isPath = name.find(u'\\') != std::u16string::npos;
    std::string native = isPath ? NSFileLibInternals::PosixFromNative(name)
                                : NSFileLibInternals::PosixNameFromNative(name);
    // dlopen takes an empty name for the program itself.
    void* module = nullptr;
    if (!native.empty()) {
        native += HasExtension(native) ? "" : ".so";
        module = dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    if (module == nullptr) {
        // The system's text names the module. A name that it was not asked for leaves none.
        const char* const reason = native.empty() ? nullptr : dlerror();
        NSLichen::RaiseWithTarget(NSLichen::XNotFound(reason != nullptr ? reason : "dlopen failed"),
                                  NSLichen::DllWord());
    }
    return std::make_unique<COpenDLLPosix>(module);
}

std::unique_ptr<IDLLLoader> MakeDLLLoader() {
    return std::make_unique<CDLLLoaderPosix>();
}

} // namespace NSSupport

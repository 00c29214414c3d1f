#include "Tests/Host/LoadedLibrary.h"

#include <iterator>
#include <stdexcept>

#include <dlfcn.h>
#include <malloc.h>

std::filesystem::path LinkedLibraryFile() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&LOPInitializeDLL), &info);
    return std::filesystem::canonical(info.dli_fname);
}

bool IsLoaded(const std::filesystem::path& file) {
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (module != nullptr) {
        dlclose(module);
    }
    return module != nullptr;
}

const int64_t kBytesKeptOfALoad = 0;

SProcessUse GetProcessUse() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    const auto heap = mallinfo2();
    return {std::distance(begin(descriptors), end(descriptors)),
            static_cast<int64_t>(heap.uordblks + heap.hblkhd)};
}

CLoadedLibrary::CLoadedLibrary(const std::filesystem::path& file)
    : fModule(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (fModule == nullptr) {
        throw std::runtime_error(dlerror());
    }
}

CLoadedLibrary::~CLoadedLibrary() {
    dlclose(fModule);
}

CFoundExport CLoadedLibrary::Find(const char* name) const {
    void* const found = dlsym(fModule, name);
    if (found == nullptr) {
        throw std::runtime_error(name);
    }
    return CFoundExport(found);
}

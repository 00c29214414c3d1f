#include "Benchmarks/Contest/CLibrary.h"

#include <stdexcept>

#include <dlfcn.h>

namespace LoopBench {

namespace {

template <class Function>
void Find(void* module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(module, name));
    if (function == nullptr) {
        throw std::runtime_error(std::string("the library lacks ") + name);
    }
}

} // namespace

void* FindInModule(const std::string& path, const char* name) {
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        throw std::runtime_error(dlerror());
    }
    void* const found = dlsym(module, name);
    if (found == nullptr) {
        throw std::runtime_error(path + " lacks " + name);
    }
    return found;
}

CLibrary::CLibrary(std::string name, const std::string& path)
    : fName(std::move(name)), fPath(path), fModule(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (fModule == nullptr) {
        throw std::runtime_error(dlerror());
    }
    Find(fModule, "LOPInitializeDLL", fInitialize);
    Find(fModule, "LOPUninitializeDLL", fUninitialize);
    Find(fModule, "LOPCreate", fCreate);
    Find(fModule, "LOPDelete", fDelete);
    Find(fModule, "LOPGetInfo", fGetInfo);
    Find(fModule, "LOPGetInfoFromBuffer", fGetInfoFromBuffer);
    Find(fModule, "LOPGetSliceInfo", fGetSliceInfo);
    Find(fModule, "LOPRenderSlice", fRenderSlice);
    Find(fModule, "LOPSetOutputSampleRate", fSetOutputSampleRate);
    Find(fModule, "LOPStartPreview", fStartPreview);
    Find(fModule, "LOPStopPreview", fStopPreview);
    Find(fModule, "LOPSetPreviewTempo", fSetPreviewTempo);
    Find(fModule, "LOPRenderPreviewBatch", fRenderPreviewBatch);
    fInitialize();
}

CLibrary::~CLibrary() {
    fUninitialize();
    dlclose(fModule);
}

LOPHandle CLibrary::Load(const std::vector<uint8_t>& file) const {
    LOPHandle handle = 0;
    const LOPResult result =
        fCreate(&handle, file.data(), static_cast<int32_t>(file.size()), nullptr, nullptr);
    if (result != kLOPResult_OK) {
        throw std::runtime_error(fName + ": LOPCreate answers " + std::to_string(result));
    }
    return handle;
}

} // namespace LoopBench
